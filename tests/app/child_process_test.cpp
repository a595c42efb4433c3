// A child started with EndWithParent ends when its parent is killed.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <chrono>

#include "app/child_process.h"

namespace {

// Running, and not a zombie waiting for its new parent to reap it.
bool Alive(pid_t pid) {
    QFile stat(QString("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) return false;
    const QByteArray line = stat.readAll();
    const auto state = line.indexOf(") ");
    return state >= 0 && line.at(state + 2) != 'Z' && line.at(state + 2) != 'X';
}

TEST(ChildProcess, EndsWhenItsParentIsKilled) {
    int pipeFds[2];
    ASSERT_EQ(::pipe(pipeFds), 0);
    const pid_t parent = ::fork();
    ASSERT_GE(parent, 0);
    if (parent == 0) {
        // The parent: starts a long sleep that should end with it, reports
        // the sleep's pid, then waits to be killed.
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
    pid_t child = 0;
    ASSERT_EQ(::read(pipeFds[0], &child, sizeof child), static_cast<ssize_t>(sizeof child));
    ::close(pipeFds[0]);
    ::close(pipeFds[1]);
    // Let the child reach its exec, then kill the parent as a timeout would.
    QThread::msleep(100);
    ASSERT_TRUE(Alive(child));
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);

    QElapsedTimer waited;
    waited.start();
    while (Alive(child) && waited.elapsed() < 5000)
        QThread::msleep(10);
    const bool survived = Alive(child);
    if (survived) ::kill(child, SIGKILL);
    EXPECT_FALSE(survived);
}

}  // namespace
