// A server started by the platform for a client runs until 5 quiet seconds
// have passed after the last release; lines not yet flushed are lost on
// that road.
#include <gtest/gtest.h>

#include "ProgramCopy.h"

using testing_support::kStillRunning;

namespace {

// A client that takes and drops an object within the 5 s starts them over.
TEST(Lifetime, AnActivatedServerEndsFiveQuietSecondsAfterTheLastRelease)
{
    testing_support::TempDir save;
    RegisteredCopy().UseSaveDirectory(save.Path());
    ASSERT_EQ(nullptr, ::FindWindowW(kMessWndClass, nullptr)) << "no server may run yet";
    auto first = std::make_unique<ShowMessClient>();
    ASSERT_EQ(S_OK, first->created());
    HWND window = nullptr;
    testing_support::WaitUntil([&] { return (window = ::FindWindowW(kMessWndClass, nullptr)) != nullptr; },
                               5000);
    ASSERT_NE(nullptr, window) << "activation runs the program normally, window and all";
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    HANDLE process = ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId);
    ASSERT_NE(nullptr, process);
    EXPECT_EQ(S_OK, first->Show(L"Alarm TI-204 high temperature"));
    first.reset();
    const DWORD firstRelease = ::GetTickCount();

    ::Sleep(2000);
    {
        ShowMessClient second;
        ASSERT_EQ(S_OK, second.created());
        EXPECT_EQ(window, ::FindWindowW(kMessWndClass, nullptr)) << "the same server";
        EXPECT_EQ(S_OK, second.Show(L"Alarm TI-204 cleared"));
    }
    const DWORD lastRelease = ::GetTickCount();
    ::Sleep(firstRelease + 5800 - lastRelease);
    EXPECT_EQ(WAIT_TIMEOUT, ::WaitForSingleObject(process, 0)) << "5.8 s after the first release";

    EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(process, 10000));
    const DWORD elapsed = ::GetTickCount() - lastRelease;
    EXPECT_GE(elapsed, 4800u);
    EXPECT_LE(elapsed, 7500u);
    DWORD exitCode = kStillRunning;
    ::GetExitCodeProcess(process, &exitCode);
    EXPECT_EQ(0u, exitCode);
    ::CloseHandle(process);

    EXPECT_TRUE(LogTexts(NewestLogFile(save.Path())).empty()) << "pending lines are not written";
}

} // namespace
