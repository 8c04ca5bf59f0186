#include "ProgramCopy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "msgwnd/MessAtom.h"

using testing_support::RunProcess;

ProgramCopy::ProgramCopy() : dir_(base_ / L"\x5DE5\x5382 Oriel")
{
    testing_support::CopyTree(testing_support::InstallDir(), dir_);
}

ProgramCopy::~ProgramCopy()
{
    if (registered_) {
        Run(L"/UnregServer");
        RunProcess(L"regsvr32 /s /u \"" + (*this / L"OrielPS.dll") + L"\"", 20000);
    }
}

std::wstring ProgramCopy::Command(const std::wstring& exeName) const
{
    return L"\"" + (*this / exeName) + L"\"";
}

DWORD ProgramCopy::Run(const std::wstring& arguments) const
{
    return RunProcess(Command() + L" " + arguments, 20000);
}

void ProgramCopy::Register()
{
    if (Run(L"/RegServer") != 0)
        throw std::runtime_error("Oriel.exe /RegServer failed");
    registered_ = true;
    if (RunProcess(L"regsvr32 /s \"" + (*this / L"OrielPS.dll") + L"\"", 20000) != 0)
        throw std::runtime_error("regsvr32 OrielPS.dll failed");
}

void ProgramCopy::UseSaveDirectory(const std::wstring& saveDirectory, int savetime, int logsize) const
{
    testing_support::WriteSaveSettings(*this / L"config\\ShowMess.ini",
                                       testing_support::SaveKeys(saveDirectory, 0, savetime, logsize));
}

namespace {

std::unique_ptr<ProgramCopy> registered;

// Copying and registering take a second or two: once for the program, in a
// single-threaded apartment as the suite's clients use.
class RegisteredCopyEnvironment : public ::testing::Environment {
    void SetUp() override
    {
        ::CoInitialize(nullptr);
        registered = std::make_unique<ProgramCopy>();
        registered->Register();
    }
    void TearDown() override
    {
        registered.reset();
        ::CoUninitialize();
    }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new RegisteredCopyEnvironment);

} // namespace

ProgramCopy& RegisteredCopy()
{
    return *registered;
}

std::wstring NewestLogFile(const std::wstring& directory)
{
    // Names are minutes, YYMMDDHHmm.qxl: the greatest name is the newest.
    std::wstring newest;
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((directory + L"\\*.qxl").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            newest = std::max(newest, std::wstring(found.cFileName));
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    return newest.empty() ? newest : directory + L"\\" + newest;
}

std::vector<std::wstring> LogTexts(const std::wstring& path)
{
    std::vector<std::wstring> texts;
    for (const DecodedRecord& record : DecodeLog(testing_support::ReadFileBytes(path)).records)
        texts.push_back(record.text);
    return texts;
}

LRESULT SendAtomLine(HWND window, const std::wstring& text)
{
    const ATOM atom = ::GlobalAddAtomW(text.c_str());
    const LRESULT result = ::SendMessageW(window, WM_MESSATOM, atom, 0);
    ::GlobalDeleteAtom(atom);
    return result;
}
