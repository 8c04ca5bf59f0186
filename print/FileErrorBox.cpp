#include "print/FileErrorBox.h"

#include <windows.h>

#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

void ReportFileErrorWithoutWindow()
{
    winlayer::ShowSystemErrorBox(::GetLastError(), IDS_ERROR_CAPTION);
}
