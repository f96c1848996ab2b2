#include "tests/support/memory_file.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sys/mman.h>
#include <unistd.h>

Memory_File::Memory_File(const std::string &text)
    : descriptor_(memfd_create("file", MFD_CLOEXEC)),
      path_(std::string("/proc/self/fd/").append(std::to_string(descriptor_)))
{
    std::ofstream file(path_, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (descriptor_ < 0 || !file.flush()) {
        abort();
    }
}

Memory_File::~Memory_File()
{
    close(descriptor_);
}

std::string Memory_File::read() const
{
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
