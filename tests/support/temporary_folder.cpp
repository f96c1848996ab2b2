#include "tests/support/temporary_folder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

Temporary_Folder::Temporary_Folder()
    : path_(std::filesystem::temp_directory_path() / "gateway-test-XXXXXX")
{
    if (!mkdtemp(path_.data())) {
        std::perror("Temporary_Folder");
        std::abort();
    }
}

Temporary_Folder::~Temporary_Folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string Temporary_Folder::write(const std::string &name, const std::string &text) const
{
    const std::filesystem::path path = path_ + "/" + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        std::perror(path.c_str());
        std::abort();
    }
    return path;
}

std::string Temporary_Folder::read(const std::string &name) const
{
    std::ifstream file(path_ + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
