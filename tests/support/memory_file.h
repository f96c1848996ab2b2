#pragma once

#include <string>

/* A file that stands in memory, for large ones that no disk need carry. */
class Memory_File
{
public:
    explicit Memory_File(const std::string &text = "");
    ~Memory_File();
    Memory_File(const Memory_File &) = delete;
    Memory_File &operator=(const Memory_File &) = delete;

    /* Opens the file as often as wanted, in this process. */
    const std::string &path() const { return path_; }

    /* Its bytes now. */
    std::string read() const;

private:
    int descriptor_;
    std::string path_;
};
