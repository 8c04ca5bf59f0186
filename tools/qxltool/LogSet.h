#pragma once
#include <windows.h>

#include <string>
#include <vector>

// Several log files read as one log: the files a save directory holds are
// one log cut into pieces by rollovers, each piece named by the minute it
// was started, so ordering them by that time puts the records in order.

struct LogFileEntry {
    std::wstring path;   // as it is opened
    std::wstring name;   // the last part of the path
    bool named = false;  // whether the name reads back as a time
    ULONGLONG nameTime = 0;
};

// The entry of one file; the name's time is read as the window reads it.
LogFileEntry MakeLogFileEntry(const std::wstring& path);

// The files in log order: by the time in their names, files with the same
// time by name.  Files whose names do not read back as a time (a converted
// text log, a renamed copy) come first, by name: they cannot be placed, and
// the records of a proper set then still come out in order after them.
// The same path given twice is kept once.
std::vector<LogFileEntry> OrderLogSet(std::vector<LogFileEntry> files);

// The log files that the arguments name: a directory stands for every
// ".qxl" file in it (extension in any case), a file for itself.  False with
// the argument in `missing` when one of them does not exist.
bool CollectLogSet(const std::vector<std::wstring>& arguments, std::vector<LogFileEntry>& files,
                   std::wstring& missing);
