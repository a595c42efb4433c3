// Topic files and the scramble list on disk at a million lines, each beside a
// plain read or write of the same bytes: loading a topic and saving the list
// should cost a small multiple of moving the bytes, never more.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "files/topic_files.h"
#include "game/operator_dialogs.h"
#include "game/word_lists.h"

namespace {

constexpr int kLines = 1000000;

// Answers every file dialog with one path; nothing else is asked.
class PathDialogs : public game::OperatorDialogs {
  public:
    explicit PathDialogs(std::string path) : path_(std::move(path)) {}
    void ShowMessage(const std::string&, const std::string&, game::MessageKind) override {}
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    std::string Prompt(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<std::string> OpenFile(const game::FileDialogRequest&) override { return path_; }
    std::optional<std::string> SaveFile(const game::FileDialogRequest&) override { return path_; }

  private:
    std::string path_;
};

// A folder of its own for the files, removed at the end.
struct Folder {
    Folder()
        : path(std::filesystem::temp_directory_path() /
               ("scrambler-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(path);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string File(const char* name) const { return (path / name).string(); }
    std::filesystem::path path;
};

const Folder& Temp() {
    static const Folder folder;
    return folder;
}

std::vector<std::string> Entries() {
    std::vector<std::string> rows;
    rows.reserve(kLines);
    for (int i = 0; i < kLines; ++i)
        rows.push_back("word" + std::to_string(i) + ",a hint for entry " + std::to_string(i));
    return rows;
}

std::string Bytes(const std::vector<std::string>& rows) {
    std::string bytes;
    for (const std::string& row : rows)
        bytes += row + "\r\n";
    return bytes;
}

// The topic file, written once.
const std::string& TopicFile() {
    static const std::string path = [] {
        const std::string p = Temp().File("topic.csv");
        std::ofstream(p, std::ios::binary) << Bytes(Entries());
        return p;
    }();
    return path;
}

void BM_LoadTopicFile(benchmark::State& state) {
    PathDialogs dialogs(TopicFile());
    game::StringList errors;
    game::WordLists lists(dialogs, errors, [] {});
    files::TopicFiles topics(lists, dialogs, errors, Temp().path.string());
    for (auto _ : state) {
        topics.AutoLoadTopic("Big", TopicFile());
        state.PauseTiming();
        if (lists.Topics().size() != 1 || !errors.Empty()) state.SkipWithError("not loaded");
        lists.cmdClearAll_Click();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<int64_t>(std::filesystem::file_size(TopicFile())));
}
BENCHMARK(BM_LoadTopicFile)->Unit(benchmark::kMillisecond);

void BM_PlainReadOfTheSameBytes(benchmark::State& state) {
    for (auto _ : state) {
        std::ifstream in(TopicFile(), std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<int64_t>(std::filesystem::file_size(TopicFile())));
}
BENCHMARK(BM_PlainReadOfTheSameBytes)->Unit(benchmark::kMillisecond);

void BM_SaveScrambleList(benchmark::State& state) {
    const std::string path = Temp().File("saved.csv");
    PathDialogs dialogs(path);
    game::StringList errors;
    game::WordLists lists(dialogs, errors, [] {});
    lists.lstWords().Assign(Entries());
    files::TopicFiles topics(lists, dialogs, errors, Temp().path.string());
    for (auto _ : state)
        topics.cmdSaveList_Click();
    if (!errors.Empty()) state.SkipWithError("not saved");
    state.SetBytesProcessed(state.iterations() *
                            static_cast<int64_t>(std::filesystem::file_size(path)));
}
BENCHMARK(BM_SaveScrambleList)->Unit(benchmark::kMillisecond);

void BM_PlainWriteOfTheSameBytes(benchmark::State& state) {
    const std::string path = Temp().File("plain.csv");
    const std::string bytes = Bytes(Entries());
    for (auto _ : state) {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes.size()));
}
BENCHMARK(BM_PlainWriteOfTheSameBytes)->Unit(benchmark::kMillisecond);

}  // namespace
