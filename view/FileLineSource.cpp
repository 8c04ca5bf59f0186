#include "view/FileLineSource.h"

#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "ring/MessageRecord.h"
#include "winlayer/Resources.h"

void ReportBrowseError()
{
    winlayer::ShowSystemErrorBox(::GetLastError(), IDS_ERROR_CAPTION);
}

FileLineSource::~FileLineSource()
{
    CloseFile();
}

void FileLineSource::SetPath(const wchar_t* path)
{
    ::lstrcpynW(filePath_, path, MAX_PATH);
}

bool FileLineSource::CloseFile()
{
    if (file_ == INVALID_HANDLE_VALUE)
        return true;
    if (!::CloseHandle(file_)) {
        ReportBrowseError();
        return false;
    }
    file_ = INVALID_HANDLE_VALUE;
    return true;
}

bool FileLineSource::OpenFile()
{
    file_ = OpenLogFile(filePath_, GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ | FILE_SHARE_WRITE);
    if (file_ != INVALID_HANDLE_VALUE)
        return true;
    ReportBrowseError();
    return false;
}

FileLineSource::Header FileLineSource::CheckHeader()
{
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file_, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::TooShort:
        return Header::TooShort;
    default:
        ReportBrowseError();
        return Header::Failed;
    }
    if (!IsNewerLogFormat(header, false))
        return Header::Accepted;
    if (!CloseFile())
        return Header::Failed;
    winlayer::ShowResourceBox(owner_, IDS_NEWER_FORMAT, IDS_ERROR_CAPTION, MB_ICONERROR);
    return Header::Refused;
}

int FileLineSource::FillPage(int topLine, MessageRecord* page, int linesPerPage)
{
    if (!CloseFile() || !OpenFile())
        return 0;
    // In the failure paths below the handle stays open for the next
    // operation to close, except after a refusal, which closed it.
    if (CheckHeader() != Header::Accepted)
        return 0;
    DWORD bytesRead = 0;
    if (!SeekLogFile(file_, (topLine + 1) * static_cast<LONG>(kRecordBytes), FILE_BEGIN) ||
        !::ReadFile(file_, page, linesPerPage * kRecordBytes, &bytesRead, nullptr)) {
        ReportBrowseError();
        return 0;
    }
    CloseFile();
    return static_cast<int>(bytesRead / kRecordBytes);
}
