/* Preloaded, it makes every file call below $ORVA_SLOW_FOLDER take $ORVA_SLOW_MS, as long as the file
   $ORVA_SLOW_FOLDER.slow is there, and writes those of the first thread, the window's, to
   $ORVA_SLOW_FOLDER.calls. */
#include "preload.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static int hasSwitch(const char* folder)
{
    char name[4096];
    snprintf(name, sizeof name, "%s.slow", folder);
    return syscall(SYS_access, name, F_OK) == 0;
}

static void take(const char* call, const char* path)
{
    const char* folder = getenv("ORVA_SLOW_FOLDER");
    if (!folder || !path || strncmp(path, folder, strlen(folder)) != 0 || path[strlen(folder)] != '/' ||
        !hasSwitch(folder))
        return;
    if (gettid() == getpid()) {
        char name[4096];
        char line[4096];
        snprintf(name, sizeof name, "%s.calls", folder);
        const int length = snprintf(line, sizeof line, "%s %s\n", call, path);
        const long calls = syscall(SYS_openat, AT_FDCWD, name, O_WRONLY | O_CREAT | O_APPEND, 0600);
        if (syscall(SYS_write, calls, line, length) != length)
            abort();
        syscall(SYS_close, calls);
    }
    usleep((useconds_t)atoi(getenv("ORVA_SLOW_MS")) * 1000);
}

#define OPEN(name)                                                                                      \
    int name(const char* path, int flags, ...)                                                          \
    {                                                                                                   \
        TAKE_MODE;                                                                                      \
        take(#name, path);                                                                              \
        return NEXT(name)(path, flags, mode);                                                           \
    }
OPEN(open)
OPEN(open64)

int stat(const char* restrict path, struct stat* restrict found)
{
    take("stat", path);
    return NEXT(stat)(path, found);
}

int lstat(const char* restrict path, struct stat* restrict found)
{
    take("lstat", path);
    return NEXT(lstat)(path, found);
}

int statx(int folder, const char* restrict path, int flags, unsigned mask, struct statx* restrict found)
{
    take("statx", path);
    return NEXT(statx)(folder, path, flags, mask, found);
}

int access(const char* path, int mode)
{
    take("access", path);
    return NEXT(access)(path, mode);
}
