// The object's COM identity: the interface under every identifier hosts use, class and
// error information, and the Complete event on every advised sink.

#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/PluginFixture.h"
#include "tests/com/TestDispatch.h"

namespace nv::comtest {
namespace {

using Microsoft::WRL::ComPtr;
using Identity = PluginTest;

TEST_F(Identity, AnswersEveryInterfaceIdentifierWithTheSameInterface) {
  for (const IID& iid : kInterfaceIds) {
    ComPtr<IUnknown> answered;
    ASSERT_HRESULT_SUCCEEDED(plugin_->QueryInterface(iid, &answered)) << std::string(GuidText(iid).begin(), GuidText(iid).end());
    EXPECT_EQ(answered.Get(), static_cast<IUnknown*>(plugin_.Get()));
  }
  ComPtr<IUnknown> fromPlugin, fromContainer;
  ComPtr<IConnectionPointContainer> container;
  ASSERT_HRESULT_SUCCEEDED(plugin_.As(&container));
  ASSERT_HRESULT_SUCCEEDED(plugin_.As(&fromPlugin));
  ASSERT_HRESULT_SUCCEEDED(container.As(&fromContainer));
  EXPECT_EQ(fromPlugin.Get(), fromContainer.Get());
}

TEST_F(Identity, ProvidesItsClassAndEvents) {
  ComPtr<IProvideClassInfo2> provider;
  ASSERT_HRESULT_SUCCEEDED(plugin_.As(&provider));
  ComPtr<ITypeInfo> info;
  ASSERT_HRESULT_SUCCEEDED(provider->GetClassInfo(&info));
  TYPEATTR* attr = nullptr;
  ASSERT_HRESULT_SUCCEEDED(info->GetTypeAttr(&attr));
  EXPECT_TRUE(IsEqualGUID(attr->guid, kClassId));
  info->ReleaseTypeAttr(attr);
  GUID source{};
  EXPECT_HRESULT_SUCCEEDED(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source));
  EXPECT_TRUE(IsEqualGUID(source, kEventIds[0]));
  EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID + 1, &source), E_INVALIDARG);
}

TEST_F(Identity, SupportsErrorInfoOnItsInterfaceOnly) {
  ComPtr<ISupportErrorInfo> support;
  ASSERT_HRESULT_SUCCEEDED(plugin_.As(&support));
  for (const IID& iid : kInterfaceIds) EXPECT_EQ(support->InterfaceSupportsErrorInfo(iid), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer), S_FALSE);
}

class Events : public PluginTest {
 protected:
  ComPtr<IConnectionPoint> PointFor(const IID& iid) {
    ComPtr<IConnectionPointContainer> container;
    EXPECT_HRESULT_SUCCEEDED(plugin_.As(&container));
    ComPtr<IConnectionPoint> point;
    EXPECT_HRESULT_SUCCEEDED(container->FindConnectionPoint(iid, &point));
    return point;
  }
  HRESULT RunWith(short data) { return CallAt(17, data); }
};

TEST_F(Events, EveryEventIdentifierFindsThePoint) {
  for (const IID& iid : kEventIds) {
    const ComPtr<IConnectionPoint> point = PointFor(iid);
    ASSERT_TRUE(point);
    IID connected{};
    EXPECT_HRESULT_SUCCEEDED(point->GetConnectionInterface(&connected));
    EXPECT_TRUE(IsEqualIID(connected, kEventIds[0]));
    ComPtr<IConnectionPointContainer> container;
    EXPECT_HRESULT_SUCCEEDED(point->GetConnectionPointContainer(&container));
    ComPtr<IUnknown> identity;
    container.As(&identity);
    EXPECT_EQ(identity.Get(), static_cast<IUnknown*>(plugin_.Get()));
  }
  ComPtr<IConnectionPointContainer> container;
  ASSERT_HRESULT_SUCCEEDED(plugin_.As(&container));
  ComPtr<IConnectionPoint> none;
  EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, &none), CONNECT_E_NOCONNECTION);
}

// Run written with 0 executes nothing and raises Complete (dispatch id 2, no arguments).
TEST_F(Events, RunWithZeroRaisesCompleteOnEveryAdvisedSink) {
  Initialize(0);
  TestDispatch current(kEventIds[0]), earlier(kEventIds[2]);
  const ComPtr<IConnectionPoint> point = PointFor(kEventIds[0]);
  DWORD first = 0, second = 0;
  ASSERT_HRESULT_SUCCEEDED(point->Advise(&current, &first));
  ASSERT_HRESULT_SUCCEEDED(point->Advise(&earlier, &second));
  EXPECT_NE(first, second);
  ASSERT_HRESULT_SUCCEEDED(RunWith(0));
  EXPECT_EQ(current.Calls(2), 1);
  EXPECT_EQ(earlier.Calls(2), 1);
  EXPECT_EQ(current.Calls(1), 0) << "Progress is never raised";
  EXPECT_EQ(current.LastArgumentCount(), 0u);
  EXPECT_EQ(GetAt<LONG>(24), 0) << "Run(0) must not execute the task";

  ASSERT_HRESULT_SUCCEEDED(point->Unadvise(second));
  ASSERT_HRESULT_SUCCEEDED(RunWith(0));
  EXPECT_EQ(current.Calls(2), 2);
  EXPECT_EQ(earlier.Calls(2), 1);
  EXPECT_EQ(earlier.References(), 1u);
  ASSERT_HRESULT_SUCCEEDED(point->Unadvise(first));  // the sinks end with this test
}

TEST_F(Events, AdviseNeedsTheEventInterface) {
  const ComPtr<IConnectionPoint> point = PointFor(kEventIds[0]);
  TestDispatch stranger;
  DWORD cookie = 7;
  EXPECT_EQ(point->Advise(&stranger, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(point->Unadvise(12345), CONNECT_E_NOCONNECTION);
}

TEST_F(Events, SinksAreReleasedWithTheObject) {
  TestDispatch sink(kEventIds[0]);
  {
    const ComPtr<IConnectionPoint> point = PointFor(kEventIds[0]);
    DWORD cookie = 0;
    ASSERT_HRESULT_SUCCEEDED(point->Advise(&sink, &cookie));
    EXPECT_GT(sink.References(), 1u);
  }
  plugin_.Reset();
  EXPECT_EQ(sink.References(), 1u);
}

}  // namespace
}  // namespace nv::comtest
