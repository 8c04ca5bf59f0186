#pragma once
#include <vector>

#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/QxlOptions.h"
#include "tools/qxltool/TextFilter.h"

// What several commands take from the command line, each error reported on
// standard error: 0, or the exit code to end with.

// The log files the arguments name, as one log in name-time order.
int CollectLogSetArguments(const QxlOptions& options, std::vector<LogFileEntry>& files);
// The --grep or --regex filter.
int SetUpTextFilter(const QxlOptions& options, TextFilter& filter);
