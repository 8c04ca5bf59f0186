// qxltool: reads, searches, follows and checks the message window's log
// files from the command line.
#include <windows.h>

#include <string>
#include <vector>

#include "lang/ResourceIds.h"
#include "tools/qxltool/Commands.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/OutputStream.h"
#include "tools/qxltool/ToolLanguage.h"
#include "view/RecordLine.h"
#include "winlayer/Resources.h"

namespace {

int PrintUsage(bool toError)
{
    OutputStream output(toError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    output.Buffer() = kQxlUsage;
    return toError ? kExitUsage : kExitOk;
}

bool NeedsLineFormat(const QxlOptions& options)
{
    return (options.command == QxlCommand::Dump || options.command == QxlCommand::Follow) &&
           options.format == OutputFormat::Line && !options.count;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    QxlOptions options;
    std::wstring error;
    if (!ParseQxlOptions(std::vector<std::wstring>(argv + 1, argv + argc), options, error)) {
        ReportError(error);
        return PrintUsage(true);
    }
    if (options.command == QxlCommand::Help)
        return PrintUsage(false);

    // The conversion's texts and the default line format come from the
    // language module; the other formats do without it.
    wchar_t lineFormat[kRecordLineFormatUnits] = {};
    if (options.command == QxlCommand::Convert || NeedsLineFormat(options)) {
        std::wstring modulePath;
        HMODULE language = LoadToolLanguage(options.language, modulePath);
        if (language == nullptr && NeedsLineFormat(options)) {
            ReportError(modulePath + L": the language module cannot be loaded (" +
                        SystemErrorText(::GetLastError()) + L"); --iso, --csv and --json do without it");
            return kExitUnreadable;
        }
        winlayer::LoadText(IDS_RECORD_LINE_FORMAT, lineFormat, kRecordLineFormatUnits);
    }

    switch (options.command) {
    case QxlCommand::Dump:
        return RunDump(options, lineFormat);
    case QxlCommand::Follow:
        return RunFollow(options, lineFormat);
    case QxlCommand::Check:
        return RunCheck(options);
    case QxlCommand::Convert:
        return RunConvert(options);
    default:
        return PrintUsage(false);
    }
}
