#pragma once

#include "switch/config/model.h"

#include <memory>
#include <string>

/* Records and files for the tests of this folder. */

using Record = std::unique_ptr<SW_Config>;

/* Every byte of the record is byte. */
Record filled_record(int byte);

Record factory_record();

bool same_bytes(const SW_Config &a, const SW_Config &b);

/* The bytes of a file, which is there. */
std::string file_text(const std::string &path);
