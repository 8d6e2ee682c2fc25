/* Preloaded, it lets file calls below $ORVA_FAIL_FOLDER fail. $ORVA_FAIL_FOLDER.fail says which: "RUN NTH
   ERRNO ALL": the NTH call since RUN was last changed, and with ALL = 1 every one after it. Which call
   failed is told in $ORVA_FAIL_FOLDER.hit. */
#include "preload.h"

#include <errno.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

static char watched[4096]; /* by descriptor: whether it is below the folder */
static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
static int run = -1;
static int calls;

static int below(const char* path)
{
    const char* folder = getenv("ORVA_FAIL_FOLDER");
    return folder && path && strncmp(path, folder, strlen(folder)) == 0 && path[strlen(folder)] == '/';
}

static int fails(const char* call)
{
    char name[4096];
    char text[64] = {0};
    const char* folder = getenv("ORVA_FAIL_FOLDER");
    snprintf(name, sizeof name, "%s.fail", folder);
    const int file = (int)syscall(SYS_openat, AT_FDCWD, name, O_RDONLY);
    if (file < 0)
        return 0;
    const long size = syscall(SYS_read, file, text, sizeof text - 1);
    syscall(SYS_close, file);
    int now, nth, error, all;
    if (size <= 0 || sscanf(text, "%d %d %d %d", &now, &nth, &error, &all) != 4)
        return 0;
    pthread_mutex_lock(&mutex);
    if (now != run) {
        run = now;
        calls = 0;
    }
    const int failing = ++calls == nth || (all && calls > nth);
    pthread_mutex_unlock(&mutex);
    if (!failing)
        return 0;
    snprintf(name, sizeof name, "%s.hit", folder);
    const int hit = (int)syscall(SYS_openat, AT_FDCWD, name, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (syscall(SYS_write, hit, call, strlen(call)) < 0)
        abort();
    syscall(SYS_close, hit);
    errno = error;
    return 1;
}

#define WATCHED(descriptor) ((unsigned)(descriptor) < sizeof watched && watched[descriptor])

#define OPEN(name)                                                                                      \
    int name(const char* path, int flags, ...)                                                          \
    {                                                                                                   \
        TAKE_MODE;                                                                                      \
        if (below(path) && fails(#name))                                                                \
            return -1;                                                                                  \
        const int opened = NEXT(name)(path, flags, mode);                                               \
        if (opened >= 0 && (size_t)opened < sizeof watched)                                             \
            watched[opened] = (char)below(path);                                                        \
        return opened;                                                                                  \
    }
OPEN(open)
OPEN(open64)

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    return WATCHED(descriptor) && fails("write") ? -1 : NEXT(write)(descriptor, bytes, size);
}

int fsync(int descriptor)
{
    return WATCHED(descriptor) && fails("fsync") ? -1 : NEXT(fsync)(descriptor);
}

int close(int descriptor)
{
    const int is = WATCHED(descriptor);
    if (is)
        watched[descriptor] = 0;
    const int closed = NEXT(close)(descriptor);
    return is && fails("close") ? -1 : closed;
}

int rename(const char* from, const char* to)
{
    return below(to) && fails("rename") ? -1 : NEXT(rename)(from, to);
}

int renameat2(int from, const char* old, int to, const char* new, unsigned flags)
{
    return below(new) && fails("renameat2") ? -1 : NEXT(renameat2)(from, old, to, new, flags);
}

int link(const char* from, const char* to)
{
    return below(to) && fails("link") ? -1 : NEXT(link)(from, to);
}

int unlink(const char* path)
{
    return below(path) && fails("unlink") ? -1 : NEXT(unlink)(path);
}
