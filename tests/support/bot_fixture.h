// The bot's core on fakes: sockets, timers and dialogs that record, and a
// fresh temporary folder as the program's folder.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>

#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_sockets.h"
#include "support/fake_timer.h"

namespace testing_support {

// A folder of its own under the system's temporary folder, removed after.
class TempFolder {
  public:
    TempFolder() {
        static std::atomic<int> count{0};
        path_ = std::filesystem::temp_directory_path() /
                ("scrambler-test-" + std::to_string(::getpid()) + "-" + std::to_string(count++));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string Path() const { return path_.string(); }
    std::string File(const std::string& name) const { return (path_ / name).string(); }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return File(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream in(File(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

  private:
    std::filesystem::path path_;
};

class BotTest : public ::testing::Test {
  protected:
    std::vector<std::string> Messages() const { return dialogs.Texts(true); }

    TempFolder folder;
    FakeDialogs dialogs;
    FakeSocketLayer sockets;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, tmrDeadline;
    session::Bot bot{{sockets, tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, tmrDeadline,
                      dialogs, nullptr, nullptr, folder.Path()}};
};

}  // namespace testing_support
