/*
 * seeds_NAME FOLDER: runs a fuzz target on every file of the folder, for builds without a fuzzing
 * engine. A property that does not hold ends the process; 1 when the folder has no file.
 */

#include "fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace
{

std::vector<std::filesystem::path> files_of(const char *folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    REQUIRE(file.is_open());
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                  std::istreambuf_iterator<char>()};
    const std::vector<uint8_t> data(bytes.begin(), bytes.end());
    dprintf(STDERR_FILENO, "%s: %zu bytes\n", path.filename().c_str(), data.size());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

} // namespace

int main(int count, char **arguments)
{
    REQUIRE(count == 2);
    const std::vector<std::filesystem::path> files = files_of(arguments[1]);
    for (const std::filesystem::path &file : files) {
        replay(file);
    }
    return files.empty() ? 1 : 0;
}
