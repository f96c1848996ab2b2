#pragma once

#include <string>

/* A new empty folder, removed with all that is in it at the end. Aborts when it cannot be made. */
class Temporary_Folder
{
public:
    Temporary_Folder();
    ~Temporary_Folder();
    Temporary_Folder(const Temporary_Folder &) = delete;
    Temporary_Folder &operator=(const Temporary_Folder &) = delete;

    const std::string &path() const { return path_; }

    /* Writes a file, name relative to the folder, with the folders on its way; returns its path. */
    std::string write(const std::string &name, const std::string &text) const;

    /* The bytes of a file, name relative to the folder; empty when it is not there. */
    std::string read(const std::string &name) const;

private:
    std::string path_;
};
