// A child started with EndWithParent ends when its parent is killed.
#include <gtest/gtest.h>

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/child_process.h"

namespace {

TEST(ChildProcess, EndsWhenItsParentIsKilled) {
    int pipeFds[2];
    ASSERT_EQ(::pipe(pipeFds), 0);
    const pid_t parent = ::fork();
    ASSERT_GE(parent, 0);
    if (parent == 0) {
        // The parent: starts a long sleep that should end with it, reports
        // the sleep's pid, then waits to be killed. Both hold the pipe's
        // write end.
        const pid_t self = ::getpid();
        const pid_t child = ::fork();
        if (child == 0) {
            EndWithParent(self);
            ::execlp("sleep", "sleep", "30", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        (void)!::write(pipeFds[1], &child, sizeof child);
        ::pause();
        ::_exit(0);
    }
    ::close(pipeFds[1]);
    pid_t child = 0;
    ASSERT_EQ(::read(pipeFds[0], &child, sizeof child), static_cast<ssize_t>(sizeof child));
    // The pipe reads as closed once neither the parent nor the sleep holds it
    // (a zombie holds nothing). Let the child reach its exec, then kill the
    // parent as a timeout would.
    pollfd closed{pipeFds[0], POLLIN, 0};
    ASSERT_EQ(::poll(&closed, 1, 100), 0) << "the sleep did not start";
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);
    const bool ended = ::poll(&closed, 1, 5000) == 1;
    if (!ended) ::kill(child, SIGKILL);
    ::close(pipeFds[0]);
    EXPECT_TRUE(ended);
}

}  // namespace
