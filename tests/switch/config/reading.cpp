#include "tests/switch/config/reading.h"

#include "switch/config/reader.h"
#include "tests/support/output_capture.h"

Reading read_text(const std::string &text, int byte)
{
    Reading reading = {false, "", filled_record(byte)};
    Output_Capture output;
    reading.good = ParseSwitchConfig(text.c_str(), text.size(), reading.record.get());
    reading.output = output.finish();
    return reading;
}
