#include "switch/config/startup_text.h"

#include <cstdio>
#include <new>
#include <sys/stat.h>
#include <utility>

namespace
{

struct Close_File {
    void operator()(FILE *file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, Close_File>;

/* To open a FIFO would wait for a writer. */
bool is_regular_file(const char *path)
{
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

/* The size of an open file, 0 when it is empty, unknown or too large. */
size_t size_of(FILE *file)
{
    struct stat status = {};
    if (fstat(fileno(file), &status) != 0 || status.st_size > off_t{SW_STARTUP_TEXT_LENGTH}) {
        return 0;
    }
    return static_cast<size_t>(status.st_size);
}

} // namespace

bool ReadStartupText(const char *path, SW_Startup_Text *read)
{
    if (!is_regular_file(path)) {
        return false;
    }
    const File file(fopen(path, "r"));
    if (file == nullptr) {
        return false;
    }
    const size_t size = size_of(file.get());
    if (size == 0) {
        return false;
    }
    std::unique_ptr<char[]> text(new (std::nothrow) char[size + 1]);
    if (text == nullptr) {
        return false;
    }
    const size_t length = fread(text.get(), 1, size, file.get());
    if (length == 0) {
        return false;
    }
    text[length] = '\0';
    *read = {std::move(text), length};
    return true;
}
