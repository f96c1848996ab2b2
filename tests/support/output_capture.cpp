#include "tests/support/output_capture.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

Output_Capture::Output_Capture(int descriptor)
    : descriptor_(descriptor), saved_(-1), file_(memfd_create("captured output", MFD_CLOEXEC))
{
    std::fflush(nullptr);
    saved_ = dup(descriptor);
    if (file_ < 0 || saved_ < 0 || dup2(file_, descriptor_) < 0) {
        std::perror("Output_Capture");
        std::abort();
    }
}

Output_Capture::~Output_Capture()
{
    if (saved_ >= 0) {
        finish();
    }
}

std::string Output_Capture::finish()
{
    std::fflush(nullptr);
    dup2(saved_, descriptor_);
    close(saved_);
    saved_ = -1;

    std::string text;
    char block[65536];
    ssize_t got = 0;
    lseek(file_, 0, SEEK_SET);
    while ((got = read(file_, block, sizeof block)) > 0) {
        text.append(block, static_cast<size_t>(got));
    }
    close(file_);
    return text;
}
