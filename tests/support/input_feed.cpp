#include "tests/support/input_feed.h"

#include <cstdio>
#include <cstdlib>
#include <stdio_ext.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

/* Makes descriptor the standard input, with nothing read ahead and no end seen. */
void take_as_input(int descriptor)
{
    if (descriptor < 0 || dup2(descriptor, STDIN_FILENO) < 0) {
        std::perror("Input_Feed");
        std::abort();
    }
    close(descriptor);
    __fpurge(stdin);
    std::clearerr(stdin);
}

} // namespace

Input_Feed::Input_Feed(std::string_view text) : saved_(dup(STDIN_FILENO))
{
    const int file = memfd_create("typed input", MFD_CLOEXEC);
    if (saved_ < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        std::perror("Input_Feed");
        std::abort();
    }
    lseek(file, 0, SEEK_SET);
    take_as_input(file);
}

Input_Feed::~Input_Feed()
{
    take_as_input(saved_);
}

std::string Input_Feed::rest()
{
    std::string text;
    for (int byte = std::fgetc(stdin); byte != EOF; byte = std::fgetc(stdin)) {
        text += static_cast<char>(byte);
    }
    return text;
}
