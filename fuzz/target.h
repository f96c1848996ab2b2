#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unistd.h>

/*
 * What the fuzz targets share. A target is one file that defines the routine below; it takes any
 * bytes, leaves nothing behind that the next call could see, and stops the process where a property
 * does not hold. docs/fuzzing.md tells how to run and add one.
 */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/* Stops the process unless the condition holds. Past the streams, which a target may have caught.
 */
#define REQUIRE(condition)                                                                         \
    ((condition) ? void()                                                                          \
                 : (dprintf(STDERR_FILENO, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition), \
                    abort()))

/* The bytes and a NUL behind them, alone on the heap: a read beyond is seen by the sanitizer. */
inline std::unique_ptr<char[]> terminated(const uint8_t *data, size_t size)
{
    std::unique_ptr<char[]> text(new char[size + 1]);
    for (size_t i = 0; i < size; i++) {
        text[i] = static_cast<char>(data[i]);
    }
    text[size] = '\0';
    return text;
}

/*
 * Takes the place of a standard stream, or any other, and keeps in memory what is written there.
 * For the life of the process: the stream is never put back.
 */
class Caught_Stream
{
public:
    explicit Caught_Stream(FILE *&stream) : stream_(open_memstream(&text_, &size_))
    {
        REQUIRE(stream_ != nullptr);
        stream = stream_;
    }
    Caught_Stream(const Caught_Stream &) = delete;
    Caught_Stream &operator=(const Caught_Stream &) = delete;

    /* What was written since the last call. */
    std::string take()
    {
        REQUIRE(fflush(stream_) == 0);
        std::string taken(text_, static_cast<size_t>(ftello(stream_)));
        rewind(stream_);
        return taken;
    }

private:
    char *text_ = nullptr;
    size_t size_ = 0;
    FILE *stream_;
};

/* All standard output of the process. */
inline Caught_Stream caughtOutput(stdout);
