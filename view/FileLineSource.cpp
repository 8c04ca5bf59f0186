#include "view/FileLineSource.h"

#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "ring/MessageRecord.h"
#include "winlayer/Resources.h"

void ReportBrowseError()
{
    winlayer::ShowSystemErrorBox(::GetLastError(), IDS_ERROR_CAPTION);
}

HANDLE OpenSavedLog(const wchar_t* path)
{
    return OpenLogFile(path, GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ | FILE_SHARE_WRITE);
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
    if (!::CloseHandle(file_))
        return false;
    file_ = INVALID_HANDLE_VALUE;
    return true;
}

bool FileLineSource::OpenFile()
{
    file_ = OpenSavedLog(filePath_);
    return file_ != INVALID_HANDLE_VALUE;
}

FileLineSource::Header FileLineSource::ReadHeader()
{
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file_, header)) {
    case HeaderRead::Complete:
        return IsNewerLogFormat(header, false) ? Header::Newer : Header::Accepted;
    case HeaderRead::TooShort:
        return Header::TooShort;
    default:
        return Header::Failed;
    }
}

void FileLineSource::RefuseNewerFormat() const
{
    winlayer::ShowResourceBox(owner_, IDS_NEWER_FORMAT, IDS_ERROR_CAPTION, MB_ICONERROR);
}

int FileLineSource::FillPage(int topLine, MessageRecord* page, int linesPerPage)
{
    if (!CloseFile() || !OpenFile()) {
        ReportBrowseError();
        return 0;
    }
    // In the failure paths below the handle stays open for the next
    // operation to close, except after a refusal, which closes it.
    switch (ReadHeader()) {
    case Header::Accepted:
        break;
    case Header::TooShort:
        return 0;
    case Header::Failed:
        ReportBrowseError();
        return 0;
    case Header::Newer:
        if (!CloseFile())
            ReportBrowseError();
        else
            RefuseNewerFormat();
        return 0;
    }
    DWORD bytesRead = 0;
    if (!SeekLogFile(file_, (topLine + 1) * static_cast<LONG>(kRecordBytes), FILE_BEGIN) ||
        !::ReadFile(file_, page, linesPerPage * kRecordBytes, &bytesRead, nullptr)) {
        ReportBrowseError();
        return 0;
    }
    if (!CloseFile())
        ReportBrowseError();
    return static_cast<int>(bytesRead / kRecordBytes);
}
