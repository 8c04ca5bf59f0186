// The component class in-process; its lines go into a ring where start-up
// would connect the main window.
#include <gtest/gtest.h>

#include <string>

#include "intake/ShowMess.h"
#include "intake/ShowMessFactory.h"
#include "ring/MessageRing.h"
#include "server/ExeModule.h"

namespace {

// Stands where start-up puts the main window: every line goes into a ring.
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

std::wstring NewestText()
{
    const MessageRing& ring = sink.ring;
    const MessageRecord& record = ring.ring[(ring.writePos + kRingSlots - 1) % kRingSlots];
    return std::wstring(record.text, wcsnlen(record.text, kMessageTextUnits));
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
    EXPECT_EQ(E_NOINTERFACE, object->QueryInterface(IID_IClassFactory, &other));
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

// The cut at 128 units and the empty line are checked through the same
// call from another process by the intake end-to-end test.
TEST(ShowMess, EveryCallAddsOneLineAsItCameAndSucceeds)
{
    IShowMess* object = CreatePlain();
    const int lines = sink.ring.lineCount;
    EXPECT_EQ(S_OK, object->ShowMessage(Units(L"Pump P-101 started")));
    EXPECT_EQ(L"Pump P-101 started", NewestText());
    EXPECT_EQ(S_OK, object->ShowMessage(nullptr));
    EXPECT_EQ(L"", NewestText());
    EXPECT_EQ(S_OK, object->ShowMessage(Units(L"\x6CF5 line\r\nbreak\t")));
    EXPECT_EQ(L"\x6CF5 line\r\nbreak\t", NewestText());
    EXPECT_EQ(lines + 3, sink.ring.lineCount);
    object->Release();
}

// An outer object that aggregates ShowMess and exposes its IShowMess.
class Outer : public IUnknown {
public:
    Outer()
    {
        EXPECT_EQ(S_OK, CShowMess::Create(this, IID_IUnknown, reinterpret_cast<void**>(&inner)));
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (::IsEqualIID(iid, IID_IUnknown)) {
            *object = static_cast<IUnknown*>(this);
            AddRef();
            return S_OK;
        }
        return inner->QueryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }

    IUnknown* inner = nullptr;
    ULONG refs = 1;
};

TEST(ShowMess, AggregatedItDelegatesIUnknownToTheOuterObject)
{
    const LONG before = exeModule.LockCount();
    Outer outer;
    ASSERT_NE(nullptr, outer.inner);
    EXPECT_NE(static_cast<IUnknown*>(&outer), outer.inner) << "the inner unknown is its own";
    EXPECT_EQ(before + 1, exeModule.LockCount());

    IShowMess* showMess = nullptr;
    ASSERT_EQ(S_OK, outer.QueryInterface(IID_IShowMess, reinterpret_cast<void**>(&showMess)));
    EXPECT_EQ(2u, outer.refs) << "the interface's reference is counted by the outer object";

    IUnknown* identity = nullptr;
    EXPECT_EQ(S_OK, showMess->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)));
    EXPECT_EQ(static_cast<IUnknown*>(&outer), identity);
    EXPECT_EQ(3u, outer.refs);
    identity->Release();
    EXPECT_EQ(S_OK, showMess->ShowMessage(Units(L"through the aggregate")));
    EXPECT_EQ(L"through the aggregate", NewestText());
    showMess->Release();
    EXPECT_EQ(1u, outer.refs);

    EXPECT_EQ(0u, outer.inner->Release());
    EXPECT_EQ(before, exeModule.LockCount());

    void* refused = nullptr;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, CShowMess::Create(&outer, IID_IShowMess, &refused));
    EXPECT_EQ(nullptr, refused);
}

} // namespace
