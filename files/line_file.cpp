#include "files/line_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace files {

std::vector<std::string> SplitLines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (c != '\r' && c != '\n') continue;
        lines.emplace_back(bytes, start, i - start);
        if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < bytes.size()) lines.emplace_back(bytes, start, std::string::npos);
    return lines;
}

ReadResult ReadLines(const std::string& path) {
    ReadResult result;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        result.status =
            std::filesystem::exists(path, error) ? ReadStatus::Unreadable : ReadStatus::Missing;
        return result;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        result.status = ReadStatus::Unreadable;
        return result;
    }
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        result.status = ReadStatus::Unreadable;
        return result;
    }
    result.status = ReadStatus::Ok;
    result.lines = SplitLines(bytes);
    return result;
}

bool WriteLines(const std::string& path, const std::vector<std::string>& lines) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    for (const std::string& line : lines) {
        out.write(line.data(), static_cast<std::streamsize>(line.size()));
        out.write("\r\n", 2);
    }
    out.flush();
    return static_cast<bool>(out);
}

bool ReplaceLines(const std::string& path, const std::vector<std::string>& lines) {
    const std::string temporary = path + ".saving";
    if (!WriteLines(temporary, lines)) {
        std::remove(temporary.c_str());
        return false;
    }
    std::error_code error;
    std::filesystem::rename(temporary, path, error);
    if (error) std::remove(temporary.c_str());
    return !error;
}

bool FileExists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string FileNameOf(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string JoinPath(const std::string& folder, const std::string& name) {
    if (folder.empty()) return name;
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

}  // namespace files
