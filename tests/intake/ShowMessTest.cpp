// The component class in-process; its lines go into a ring where start-up
// would connect the main window.
#include <gtest/gtest.h>

#include <string>

#include "intake/ShowMess.h"
#include "intake/ShowMessFactory.h"
#include "ring/MessageRing.h"
#include "server/ExeModule.h"

namespace {

struct RingSink : LineSink {
    MessageRing ring;
    int AddMessage(const wchar_t* text) override { return ring.AddMessage(text); }
};
RingSink sink;

class ConnectSink : public ::testing::Environment {
    void SetUp() override { exeModule.lineSink = &sink; }
};
const ::testing::Environment* const connectSink =
    ::testing::AddGlobalTestEnvironment(new ConnectSink);

unsigned short* Units(const std::wstring& text)
{
    return reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(text.c_str()));
}

IShowMess* CreatePlain()
{
    IShowMess* object = nullptr;
    EXPECT_EQ(S_OK, CShowMess::Create(nullptr, IID_IShowMess, reinterpret_cast<void**>(&object)));
    return object;
}

TEST(ShowMess, OffersIUnknownAndIShowMessOnly)
{
    IShowMess* object = CreatePlain();
    ASSERT_NE(nullptr, object);
    IUnknown* unknown = nullptr;
    EXPECT_EQ(S_OK, object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)));
    IShowMess* again = nullptr;
    EXPECT_EQ(S_OK, unknown->QueryInterface(IID_IShowMess, reinterpret_cast<void**>(&again)));
    EXPECT_EQ(object, again);
    void* other = reinterpret_cast<void*>(1);
    EXPECT_EQ(E_NOINTERFACE, object->QueryInterface(IID_IDispatch, &other));
    EXPECT_EQ(nullptr, other);
    again->Release();
    unknown->Release();
    EXPECT_EQ(0u, object->Release());
}

TEST(ShowMess, EachObjectAndEachFactoryLockHoldsOneModuleLock)
{
    const LONG before = exeModule.LockCount();
    IShowMess* first = CreatePlain();
    IShowMess* second = CreatePlain();
    EXPECT_EQ(before + 2, exeModule.LockCount());
    first->AddRef();
    first->Release();
    EXPECT_EQ(before + 2, exeModule.LockCount()) << "references are not locks";
    first->Release();
    EXPECT_EQ(before + 1, exeModule.LockCount());
    second->Release();
    EXPECT_EQ(before, exeModule.LockCount());

    void* refused = nullptr;
    EXPECT_EQ(E_NOINTERFACE, CShowMess::Create(nullptr, IID_IDispatch, &refused));
    EXPECT_EQ(before, exeModule.LockCount()) << "a refused creation leaves nothing behind";

    CShowMessFactory factory;
    IShowMess* object = nullptr;
    EXPECT_EQ(S_OK, factory.CreateInstance(nullptr, IID_IShowMess, reinterpret_cast<void**>(&object)));
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(S_OK, factory.LockServer(TRUE));
    EXPECT_EQ(before + 2, exeModule.LockCount());
    object->Release();
    EXPECT_EQ(S_OK, factory.LockServer(FALSE));
    EXPECT_EQ(before, exeModule.LockCount());
}

// The cut at 128 units is checked through the same call from another
// process by the program's intake test.
TEST(ShowMess, EveryCallAddsOneLineAsItCameAndSucceeds)
{
    IShowMess* object = CreatePlain();
    const int lines = sink.ring.lineCount;
    EXPECT_EQ(S_OK, object->ShowMessage(Units(L"Pump P-101 started")));
    EXPECT_STREQ(L"Pump P-101 started", sink.ring.ring[sink.ring.writePos - 1].text);
    EXPECT_EQ(S_OK, object->ShowMessage(Units(L"\x6CF5 line\r\nbreak\t")));
    EXPECT_STREQ(L"\x6CF5 line\r\nbreak\t", sink.ring.ring[sink.ring.writePos - 1].text);
    EXPECT_EQ(lines + 2, sink.ring.lineCount);
    object->Release();
}

} // namespace
