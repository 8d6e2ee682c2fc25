/* What the preloaded libraries share: the call that they stand before, and the mode of an open
 * call. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <sys/types.h>

#define NEXT(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

/* Declares `mode` in a function whose last named argument is `flags`. */
#define TAKE_MODE                                                                                  \
    va_list more;                                                                                  \
    va_start(more, flags);                                                                         \
    const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(more, mode_t) : 0;                  \
    va_end(more)
