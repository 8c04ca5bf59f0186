#include "tools/qxltool/Commands.h"

#include "browse/ConvertedLog.h"
#include "browse/TextLogConversion.h"
#include "tools/qxltool/BoxesToStderr.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/OutputStream.h"
#include "tools/qxltool/TextEncoding.h"

int RunConvert(const QxlOptions& options)
{
    wchar_t filePath[MAX_PATH] = {};
    const DWORD length = ::GetFullPathNameW(options.paths[0].c_str(), MAX_PATH, filePath, nullptr);
    if (length == 0 || length >= MAX_PATH) {
        ReportError(options.paths[0] + L": " + SystemErrorText(length == 0 ? ::GetLastError()
                                                                           : ERROR_FILENAME_EXCED_RANGE));
        return kExitUnreadable;
    }
    if (!IsTextLogPath(filePath)) {
        ReportError(options.paths[0] + L": not a text log (the name must end in .log)");
        return kExitUsage;
    }
    const DWORD attributes = ::GetFileAttributesW(filePath);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        ReportError(options.paths[0] + L": no such file");
        return kExitUnreadable;
    }

    // Exactly the browser's conversion, which reports through message
    // boxes; here they go to standard error.
    BoxesToStderr boxes;
    HANDLE logFile = INVALID_HANDLE_VALUE;
    const int converted = ConvertTextLog(nullptr, filePath, logFile);
    if (logFile != INVALID_HANDLE_VALUE)
        ::CloseHandle(logFile);
    if (converted == 0) {
        if (boxes.Count() == 0)
            ReportError(options.paths[0] +
                        L": not converted: the earlier conversion beside it is too short for a "
                        L"header, or cannot be deleted");
        return kExitNotConverted;
    }
    OutputStream output(STD_OUTPUT_HANDLE);
    output.Buffer() = ToUtf8(filePath) + "\n";
    return output.Flush() ? kExitOk : kExitOutputClosed;
}
