// The enumerators of the event connections, as a host that lists the points and sinks
// rather than asking by identifier meets them: Next, Skip, Reset and Clone, and who holds
// which reference.

#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/PluginFixture.h"
#include "tests/com/TestDispatch.h"

namespace nv::comtest {
namespace {

using Microsoft::WRL::ComPtr;

// The count an object has once the caller's own references are set aside.
template <typename Interface>
ULONG ReferencesOf(Interface* object) {
  object->AddRef();
  return object->Release();
}

class Enumerators : public PluginTest {
 protected:
  ComPtr<IEnumConnectionPoints> Points() {
    ComPtr<IConnectionPointContainer> container;
    EXPECT_HRESULT_SUCCEEDED(plugin_.As(&container));
    ComPtr<IEnumConnectionPoints> points;
    EXPECT_HRESULT_SUCCEEDED(container->EnumConnectionPoints(&points));
    return points;
  }
  ComPtr<IConnectionPoint> OnlyPoint() {
    ComPtr<IConnectionPoint> point;
    ULONG fetched = 0;
    EXPECT_EQ(Points()->Next(1, &point, &fetched), S_OK);
    EXPECT_EQ(fetched, 1u);
    return point;
  }
};

TEST_F(Enumerators, TheOnePointIsTheEventInterfaces) {
  const ComPtr<IEnumConnectionPoints> points = Points();
  ASSERT_TRUE(points);
  EXPECT_EQ(ReferencesOf(points.Get()), 1u);
  IConnectionPoint* got[2] = {};
  ULONG fetched = 7;
  ASSERT_EQ(points->Next(2, got, &fetched), S_FALSE);
  ASSERT_EQ(fetched, 1u);
  EXPECT_EQ(got[1], nullptr);
  IID connected{};
  EXPECT_HRESULT_SUCCEEDED(got[0]->GetConnectionInterface(&connected));
  EXPECT_TRUE(IsEqualIID(connected, kEventIds[0]));
  ComPtr<IConnectionPointContainer> container;
  ASSERT_HRESULT_SUCCEEDED(got[0]->GetConnectionPointContainer(&container));
  ComPtr<IUnknown> identity;
  ASSERT_HRESULT_SUCCEEDED(container.As(&identity));
  EXPECT_EQ(identity.Get(), static_cast<IUnknown*>(plugin_.Get()));
  EXPECT_EQ(got[0]->Release(), 1u) << "the enumerator keeps its own reference to the point";

  fetched = 7;
  EXPECT_EQ(points->Next(1, got, &fetched), S_FALSE) << "at the end";
  EXPECT_EQ(fetched, 0u);
  EXPECT_EQ(points->Next(1, got, nullptr), S_FALSE) << "one item may be asked without a count";
  EXPECT_EQ(points->Next(2, got, nullptr), E_INVALIDARG);
  EXPECT_EQ(points->Next(1, nullptr, &fetched), E_POINTER);
}

TEST_F(Enumerators, SkipResetAndCloneMoveEachTheirOwnPosition) {
  const ComPtr<IEnumConnectionPoints> points = Points();
  EXPECT_EQ(points->Skip(2), S_FALSE);
  EXPECT_EQ(points->Skip(0), S_OK);
  EXPECT_HRESULT_SUCCEEDED(points->Reset());
  EXPECT_EQ(points->Skip(1), S_OK);

  ComPtr<IEnumConnectionPoints> atEnd, fromStart;
  ASSERT_HRESULT_SUCCEEDED(points->Clone(&atEnd));
  ASSERT_NE(atEnd.Get(), points.Get());
  EXPECT_EQ(ReferencesOf(atEnd.Get()), 1u);
  ComPtr<IConnectionPoint> point;
  EXPECT_EQ(atEnd->Next(1, &point, nullptr), S_FALSE) << "a clone starts where its original was";

  ASSERT_HRESULT_SUCCEEDED(points->Reset());
  ASSERT_HRESULT_SUCCEEDED(points->Clone(&fromStart));
  EXPECT_EQ(fromStart->Next(1, &point, nullptr), S_OK);
  ASSERT_TRUE(point);
  EXPECT_EQ(points->Skip(1), S_OK) << "the clone's move left the original where it was";
  EXPECT_EQ(points->Clone(nullptr), E_POINTER);
}

// A host that finds the point by enumeration attaches its sink there and hears Complete.
TEST_F(Enumerators, ASinkAdvisedOnTheEnumeratedPointHearsComplete) {
  Initialize(0);
  TestDispatch sink(kEventIds[0]);
  const ComPtr<IConnectionPoint> point = OnlyPoint();
  ASSERT_TRUE(point);
  DWORD cookie = 0;
  ASSERT_HRESULT_SUCCEEDED(point->Advise(&sink, &cookie));
  ASSERT_HRESULT_SUCCEEDED(CallAt(17, static_cast<short>(0)));
  EXPECT_EQ(sink.Calls(2), 1);
  ASSERT_HRESULT_SUCCEEDED(point->Unadvise(cookie));
}

TEST_F(Enumerators, ConnectionsListEverySinkByItsCookie) {
  TestDispatch first(kEventIds[0]), second(kEventIds[1]);
  const ComPtr<IConnectionPoint> point = OnlyPoint();
  ASSERT_TRUE(point);
  DWORD firstCookie = 0, secondCookie = 0;
  ASSERT_HRESULT_SUCCEEDED(point->Advise(&first, &firstCookie));
  ASSERT_HRESULT_SUCCEEDED(point->Advise(&second, &secondCookie));
  const ULONG advised = first.References();

  ComPtr<IEnumConnections> connections;
  ASSERT_HRESULT_SUCCEEDED(point->EnumConnections(&connections));
  EXPECT_EQ(ReferencesOf(connections.Get()), 1u);
  EXPECT_EQ(first.References(), advised + 1) << "the enumerator holds the sinks it lists";

  // Unadvised after the enumerator was made: the listing stays as it was when made.
  ASSERT_HRESULT_SUCCEEDED(point->Unadvise(secondCookie));

  CONNECTDATA data[3] = {};
  ULONG fetched = 0;
  ASSERT_EQ(connections->Next(3, data, &fetched), S_FALSE);
  ASSERT_EQ(fetched, 2u);
  EXPECT_EQ(data[0].pUnk, static_cast<IUnknown*>(&first));
  EXPECT_EQ(data[0].dwCookie, firstCookie);
  EXPECT_EQ(data[1].pUnk, static_cast<IUnknown*>(&second));
  EXPECT_EQ(data[1].dwCookie, secondCookie);
  EXPECT_EQ(first.References(), advised + 2) << "each connection handed out carries a reference";
  for (ULONG i = 0; i < fetched; ++i) data[i].pUnk->Release();

  ComPtr<IEnumConnections> clone;
  ASSERT_HRESULT_SUCCEEDED(connections->Clone(&clone));
  EXPECT_EQ(clone->Next(1, data, nullptr), S_FALSE);
  ASSERT_HRESULT_SUCCEEDED(clone->Reset());
  EXPECT_EQ(clone->Skip(1), S_OK);
  ASSERT_EQ(clone->Next(1, data, nullptr), S_OK);
  EXPECT_EQ(data[0].dwCookie, secondCookie);
  data[0].pUnk->Release();

  connections.Reset();
  clone.Reset();
  EXPECT_EQ(first.References(), advised) << "the enumerators gave their references back";
  EXPECT_EQ(second.References(), 1u);

  ASSERT_HRESULT_SUCCEEDED(point->EnumConnections(&connections));
  EXPECT_EQ(connections->Next(1, data, nullptr), S_OK);
  EXPECT_EQ(data[0].dwCookie, firstCookie);
  data[0].pUnk->Release();
  EXPECT_EQ(connections->Skip(1), S_FALSE) << "the sink unadvised before is no longer listed";
  ASSERT_HRESULT_SUCCEEDED(point->Unadvise(firstCookie));
}

}  // namespace
}  // namespace nv::comtest
