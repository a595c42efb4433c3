#include "app/child_process.h"

#include <unistd.h>
#include <csignal>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

void EndWithParent(int parentPid) {
#if defined(__linux__)
    // Only async-signal-safe calls: this runs between fork and exec.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    // The parent may have died before the line above took effect.
    if (::getppid() != parentPid) ::_exit(1);
#else
    (void)parentPid;
#endif
}
