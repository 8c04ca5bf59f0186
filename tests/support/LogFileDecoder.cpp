#include "support/LogFileDecoder.h"

namespace {

constexpr size_t kSlot = 272;

WORD Word(const std::vector<unsigned char>& bytes, size_t offset)
{
    return static_cast<WORD>(bytes[offset] | (bytes[offset + 1] << 8));
}

std::wstring Text(const std::vector<unsigned char>& bytes, size_t offset, size_t maxUnits)
{
    std::wstring text;
    for (size_t i = 0; i < maxUnits; ++i) {
        const WORD unit = Word(bytes, offset + 2 * i);
        if (unit == 0)
            break;
        text += static_cast<wchar_t>(unit);
    }
    return text;
}

} // namespace

DecodedLog DecodeLog(const std::vector<unsigned char>& bytes)
{
    DecodedLog log;
    for (size_t offset = kSlot; offset + kSlot <= bytes.size(); offset += kSlot) {
        DecodedRecord record;
        WORD* fields[] = {&record.year, &record.month,  &record.dayOfWeek, &record.day,
                          &record.hour, &record.minute, &record.second,    &record.milliseconds};
        for (size_t f = 0; f < 8; ++f)
            *fields[f] = Word(bytes, offset + 2 * f);
        record.text = Text(bytes, offset + 16, 128);
        log.records.push_back(record);
    }
    return log;
}

std::vector<unsigned char> MakeLogImage(const std::wstring& version, size_t records, size_t tail)
{
    std::vector<unsigned char> bytes(kSlot * (records + 1), 0);
    for (size_t i = 0; i < version.size(); ++i) {
        bytes[2 * i] = static_cast<unsigned char>(version[i] & 0xFF);
        bytes[2 * i + 1] = static_cast<unsigned char>(version[i] >> 8);
    }
    bytes.insert(bytes.end(), tail, 0xAB);
    return bytes;
}

void PutLogRecord(std::vector<unsigned char>& image, size_t index, const std::wstring& text,
                  const SYSTEMTIME& stamp)
{
    const size_t offset = kSlot * (index + 1);
    const WORD fields[] = {stamp.wYear,   stamp.wMonth,  stamp.wDayOfWeek, stamp.wDay,
                           stamp.wHour,   stamp.wMinute, stamp.wSecond,    stamp.wMilliseconds};
    for (size_t f = 0; f < 8; ++f) {
        image[offset + 2 * f] = static_cast<unsigned char>(fields[f] & 0xFF);
        image[offset + 2 * f + 1] = static_cast<unsigned char>(fields[f] >> 8);
    }
    for (size_t i = 0; i < 128; ++i) {
        const WORD unit = i < text.size() ? static_cast<WORD>(text[i]) : 0;
        image[offset + 16 + 2 * i] = static_cast<unsigned char>(unit & 0xFF);
        image[offset + 16 + 2 * i + 1] = static_cast<unsigned char>(unit >> 8);
    }
}

std::vector<LogLine> NumberedLines(size_t count, const std::wstring& prefix, const SYSTEMTIME& first)
{
    FILETIME start;
    ::SystemTimeToFileTime(&first, &start);
    const ULONGLONG base = (static_cast<ULONGLONG>(start.dwHighDateTime) << 32) | start.dwLowDateTime;
    std::vector<LogLine> lines(count);
    for (size_t i = 0; i < count; ++i) {
        const ULONGLONG at = base + i * 10000000ULL;
        const FILETIME time = {static_cast<DWORD>(at), static_cast<DWORD>(at >> 32)};
        ::FileTimeToSystemTime(&time, &lines[i].time);
        lines[i].text = prefix + std::to_wstring(i);
    }
    return lines;
}

std::vector<unsigned char> LogImage(const std::vector<LogLine>& lines, const std::wstring& version,
                                    size_t tail)
{
    std::vector<unsigned char> image = MakeLogImage(version, lines.size(), tail);
    for (size_t i = 0; i < lines.size(); ++i)
        PutLogRecord(image, i, lines[i].text, lines[i].time);
    return image;
}
