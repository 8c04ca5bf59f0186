#pragma once
// What the log drivers read straight from a file's bytes, to judge the
// program's readers by.
#include <algorithm>
#include <cstring>
#include <string>

#include "log/LogFormat.h"
#include "ring/MessageRecord.h"

inline bool NewerHeader(const std::string& file)
{
    unsigned char header[kLogHeaderTextBytes] = {};
    std::memcpy(header, file.data(), std::min<std::size_t>(file.size(), kLogHeaderTextBytes));
    return IsNewerLogFormat(header, false);
}

// A copy: not every record a reader takes starts on a whole slot.
inline MessageRecord RecordAt(const std::string& file, std::size_t offset)
{
    MessageRecord record;
    std::memcpy(&record, file.data() + offset, kRecordBytes);
    return record;
}
