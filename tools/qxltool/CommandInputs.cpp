#include "tools/qxltool/CommandInputs.h"

#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/OutputStream.h"

int CollectLogSetArguments(const QxlOptions& options, std::vector<LogFileEntry>& files)
{
    std::wstring missing;
    if (!CollectLogSet(options.paths, files, missing)) {
        ReportError(missing + L": no such file or directory");
        return kExitUnreadable;
    }
    files = OrderLogSet(std::move(files));
    if (files.empty()) {
        ReportError(L"no log files (*.qxl) found");
        return kExitUnreadable;
    }
    return 0;
}

int SetUpTextFilter(const QxlOptions& options, TextFilter& filter)
{
    std::wstring error;
    if (!filter.Set(options.grep, options.regex, error)) {
        ReportError(error);
        return kExitUsage;
    }
    return 0;
}
