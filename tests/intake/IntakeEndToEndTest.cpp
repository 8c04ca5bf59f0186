// The real program and its clients as separate processes: both intake roads
// into the log file, activation and the shutdown monitor, the single
// instance, and registration.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "msgwnd/MessAtom.h"
#include "ServerInstallation.h"

using testing_support::kStillRunning;
using testing_support::RunningProcess;
using testing_support::RunProcess;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);

const auto* const environment =
    ::testing::AddGlobalTestEnvironment(new ServerInstallationEnvironment);

auto TimeOf(const DecodedRecord& r)
{
    return std::make_tuple(r.year, r.month, r.day, r.hour, r.minute, r.second, r.milliseconds);
}

class Intake : public ::testing::Test {
protected:
    void SetUp() override { ServerInstallation::UseFreshSaveDirectory(); }

    // The program started by hand, as the suite's runtime starts it.
    std::unique_ptr<RunningProcess> StartServer()
    {
        auto server = std::make_unique<RunningProcess>(ServerInstallation::Quoted(ServerInstallation::Program()));
        window = server->FindWindowOfClass(L"OrielMessWnd", 10000);
        EXPECT_NE(nullptr, window);
        return server;
    }

    // Closing the window writes every pending line and ends the process.
    void CloseServer(RunningProcess& server)
    {
        ::PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(0u, server.Wait(10000));
    }

    HWND window = nullptr;
};

TEST_F(Intake, LinesFromBothRoadsReachTheLogInTheirOrderAndOnlyIShowMessIsOffered)
{
    auto server = StartServer();
    IDispatch* dispatch = nullptr;
    EXPECT_EQ(E_NOINTERFACE, ::CoCreateInstance(CLSID_ShowMess, nullptr, CLSCTX_LOCAL_SERVER,
                                                IID_IDispatch, reinterpret_cast<void**>(&dispatch)));
    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());
    EXPECT_EQ(E_NOINTERFACE,
              client.get()->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)));

    const std::wstring longLine = std::wstring(100, L'a') + std::wstring(100, L'b') + std::wstring(100, L'c');
    const std::wstring atom127(127, L'q');
    const std::wstring atom200 = std::wstring(127, L'r') + std::wstring(73, L's');
    EXPECT_EQ(S_OK, client.Show(L"Pump P-101 started"));
    EXPECT_EQ(0, SendAtomLine(window, L"Valve V-7 opened"));
    EXPECT_EQ(S_OK, client.Show(L"\x6CF5 P-102 \x505C\x6B62"));
    EXPECT_EQ(S_OK, client.Show(L""));
    EXPECT_EQ(S_OK, client.Show(longLine));
    EXPECT_EQ(0, SendAtomLine(window, atom127));
    EXPECT_EQ(0, SendAtomLine(window, atom200));
    ATOM gone = ::GlobalAddAtomW(L"deleted before it was sent");
    ::GlobalDeleteAtom(gone);
    EXPECT_EQ(-1, ::SendMessageW(window, WM_MESSATOM, gone, 0)) << "nothing is added";
    EXPECT_EQ(S_OK, client.Show(L"Driver MODBUS-2 lost connection"));
    client.Release();
    CloseServer(*server);

    const std::wstring expected[] = {
        L"Pump P-101 started", L"Valve V-7 opened", L"\x6CF5 P-102 \x505C\x6B62", L"",
        longLine.substr(0, 128), atom127, atom200.substr(0, 127), L"Driver MODBUS-2 lost connection"};
    DecodedLog log = ServerInstallation::NewestLog();
    ASSERT_EQ(sizeof expected / sizeof expected[0], log.records.size());
    EXPECT_EQ(0u, log.trailingBytes);
    for (size_t i = 0; i < log.records.size(); ++i) {
        EXPECT_EQ(expected[i], log.records[i].text) << "record " << i;
        if (i > 0) {
            EXPECT_LE(TimeOf(log.records[i - 1]), TimeOf(log.records[i])) << "record " << i;
        }
    }
}

// Started by the platform for a client, the server runs until 5 quiet
// seconds have passed after the last release; a client that comes within
// them keeps it.  Lines not yet flushed are lost on this road.
TEST_F(Intake, AnActivatedServerEndsFiveSecondsAfterItsLastClient)
{
    ASSERT_EQ(nullptr, ::FindWindowW(L"OrielMessWnd", nullptr)) << "no server may run yet";
    auto first = std::make_unique<ShowMessClient>();
    ASSERT_EQ(S_OK, first->created());
    HWND serverWindow = FindMessageWindow(5000);
    ASSERT_NE(nullptr, serverWindow) << "activation runs the program normally, window and all";
    HANDLE process = OpenServerProcess(serverWindow);
    ASSERT_NE(nullptr, process);
    EXPECT_EQ(S_OK, first->Show(L"Alarm TI-204 high temperature"));
    first.reset();

    ::Sleep(3000);
    ShowMessClient second;
    ASSERT_EQ(S_OK, second.created());
    EXPECT_EQ(serverWindow, ::FindWindowW(L"OrielMessWnd", nullptr)) << "the same server";
    EXPECT_EQ(S_OK, second.Show(L"Alarm TI-204 cleared"));
    ::Sleep(3000);
    EXPECT_EQ(kStillRunning, WaitForExit(process, 0)) << "6 s after the first release";

    const DWORD released = ::GetTickCount();
    second.Release();
    EXPECT_EQ(0u, WaitForExit(process, 10000));
    const DWORD elapsed = ::GetTickCount() - released;
    EXPECT_GE(elapsed, 4800u);
    EXPECT_LE(elapsed, 7500u);
    ::CloseHandle(process);

    EXPECT_EQ(0u, ServerInstallation::NewestLog().records.size()) << "pending lines are not written";
}

TEST_F(Intake, ASecondInstanceEndsAtOnceAndShowmessFeedsInputAndArgumentsThroughBothRoads)
{
    auto server = StartServer();
    const std::wstring program = ServerInstallation::Quoted(ServerInstallation::Program());
    EXPECT_EQ(kExitRefused, RunProcess(program, 10000));
    EXPECT_EQ(kExitRefused, RunProcess(program + L" /RegServer", 10000)) << "needs the first closed";
    EXPECT_EQ(0, SendAtomLine(window, L"still here"));
    const std::wstring tool = ServerInstallation::Quoted(ServerInstallation::Dir() + L"\\showmess.exe");
    const std::string input = "Pump P-3 \xE6\xB3\xB5 on\r\n\r\nFeeder F-1 stopped";
    testing_support::TempDir inputDir;
    testing_support::WriteFileBytes(inputDir / L"lines.txt",
                                    std::vector<unsigned char>(input.begin(), input.end()));
    EXPECT_EQ(0u, RunProcess(L"cmd /c \"" + tool + L" < \"" + (inputDir / L"lines.txt") + L"\"\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --atom \"Valve V-9 closed\" \"Valve V-10 closed\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --count 3 Load --close", 20000));
    EXPECT_EQ(0u, server->Wait(10000));
    EXPECT_EQ(1u, RunProcess(tool + L" --atom \"no window\"", 20000));

    const std::wstring expected[] = {L"still here", L"Pump P-3 \x6CF5 on", L"", L"Feeder F-1 stopped",
                                     L"Valve V-9 closed", L"Valve V-10 closed",
                                     L"Load 1", L"Load 2", L"Load 3"};
    DecodedLog log = ServerInstallation::NewestLog();
    ASSERT_EQ(sizeof expected / sizeof expected[0], log.records.size());
    for (size_t i = 0; i < log.records.size(); ++i)
        EXPECT_EQ(expected[i], log.records[i].text) << "record " << i;
}

} // namespace
