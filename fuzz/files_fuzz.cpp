// Whole settings and topic files through loading, as the operator's buttons
// load them: the first two bytes give the length of the settings file, the
// rest is a topic file that the settings name and that Load Topic opens too.
// Loading and saving again must give the same file: anything else means a
// value did not survive its own line.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "game/puzzle.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_sockets.h"
#include "support/fake_timer.h"

namespace {

using namespace testing_support;

// One folder for the whole run, removed when the process ends (its name
// is never destroyed, so the removal at exit can still read it).
const std::string& Folder() {
    static const std::string& folder = *new std::string([] {
        const auto path = std::filesystem::temp_directory_path() /
                          ("scrambler-files-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(Folder(), ignored);
        });
        return path.string();
    }());
    return folder;
}

void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::size_t split = std::min<std::size_t>(std::size_t{data[0]} << 8 | data[1], size - 2);
    const std::string settings(reinterpret_cast<const char*>(data + 2), split);
    const std::string topicFile(reinterpret_cast<const char*>(data + 2 + split), size - 2 - split);
    const std::string topicPath = Folder() + "/words.csv";
    Write(topicPath, topicFile);
    Write(Folder() + "/settings", settings + "\r\ntopic:Words:" + topicPath + "\r\n");

    FakeDialogs dialogs;
    FakeSocketLayer sockets;
    FakeTimer msgPause, idle, topics, ccoms, ccom2, deadline;
    session::Bot bot(
        {sockets, msgPause, idle, topics, ccoms, ccom2, deadline, dialogs, {}, {}, Folder()});
    EnterFakeRoom(sockets, bot.client);

    // The first round may settle a value (a user name that is all markup
    // saves empty and loads as "Unknown"); from then on, loading and saving
    // must give the same file.
    files::SettingsFields fields;
    std::string saved[2];
    for (int round = 0; round < 3; ++round) {
        fields = bot.settings.cmdLoadSettings_Click(fields);
        bot.settings.cmdSaveSettings_Click(fields);
        saved[round % 2] = Read(Folder() + "/settings");
    }
    if (saved[0] != saved[1]) std::abort();

    dialogs.fileAnswers = {topicPath};
    dialogs.promptAnswers = {settings.substr(0, 40)};
    bot.topicFiles.cmdLoadTopic_Click();
    game::RandomSource random(size);
    for (const game::TopicClass& topic : bot.game.Lists().Topics()) {
        bot.game.Lists().AddTopicList(topic.GetTopic());
        for (const std::string& word : topic.GetAllWords())
            game::MakePuzzle(word, size % 2 == 0, static_cast<int>(size % 3), random);
    }
    bot.game.Lists().cmdRandomize_Click(random);
    return 0;
}
