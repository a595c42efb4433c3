// Text files as the program keeps them: 8-bit text read and written as
// bytes, one entry a line, CR LF written after every line.
#pragma once

#include <string>
#include <vector>

namespace files {

enum class ReadStatus { Ok, Missing, Unreadable };

struct ReadResult {
    ReadStatus status = ReadStatus::Missing;
    std::vector<std::string> lines;
};

// The lines of a file. A line ends at CR LF, at a lone CR or at a lone LF
// (files written elsewhere use LF alone); a last line without an end counts.
ReadResult ReadLines(const std::string& path);

// Splits bytes into lines by the rule above; linear in the size.
std::vector<std::string> SplitLines(const std::string& bytes);

// Creates or truncates the file and writes each line followed by CR LF.
bool WriteLines(const std::string& path, const std::vector<std::string>& lines);

// Writes to a temporary file in the same folder and renames it over `path`,
// so that a failure half way leaves the old file as it was.
bool ReplaceLines(const std::string& path, const std::vector<std::string>& lines);

bool FileExists(const std::string& path);
// The folder part of a path (without the last separator), "" for a bare name.
std::string FolderOf(const std::string& path);
// The part after the last '/' or '\'.
std::string FileNameOf(const std::string& path);
// `folder` and `name` joined with one '/'.
std::string JoinPath(const std::string& folder, const std::string& name);

}  // namespace files
