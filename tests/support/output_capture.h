#pragma once

#include <string>

/*
 * Catches what the process writes on one of its descriptors, standard output unless told otherwise,
 * however it is written: through stdio, by write(), or by a child process. Output of before is
 * flushed first; the descriptor is put back by finish() or by the destructor.
 */
class Output_Capture
{
public:
    explicit Output_Capture(int descriptor = 1);
    ~Output_Capture();
    Output_Capture(const Output_Capture &) = delete;
    Output_Capture &operator=(const Output_Capture &) = delete;

    /* Ends the capture and returns all bytes that were written. Once only. */
    std::string finish();

private:
    int descriptor_;
    int saved_;
    int file_;
};
