// Both controls in a container that gives them all that containers may: activation with and without
// the user interface, extents, ambient properties, places to draw and to save, and abrupt ends.
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/Canvas.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/SuiteTest.h"
#include "tests/windows/support/TestContainer.h"
#include "tests/windows/support/TestedLibrary.h"
#include "windows/automation/EventSubscription.h"

namespace krv::tests {
namespace {

using Microsoft::WRL::ComPtr;
using windows::LateBound;

struct TestedControl {
    const char* name;
    const TestedLibrary& (*library)();
    CLSID id;
    SIZEL extent;
};

void PrintTo(const TestedControl& tested, std::ostream* stream) {
    *stream << tested.name;
}

// What a container of one of the controls meets; everything is released by the end of each test.
class Containers : public AutomationTest, public ::testing::WithParamInterface<TestedControl> {
 protected:
    Containers() { OleInitialize(nullptr); }
    ~Containers() override {
        EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        OleUninitialize();
    }
    [[nodiscard]] static LateBound New() { return GetParam().library().Create(GetParam().id); }

    static bool HasFocusWithin(HWND window) {
        return GetFocus() == window || IsChild(window, GetFocus()) != 0;
    }
};

TEST_P(Containers, ActivateAndDeactivateInPlaceAndWithTheUserInterface) {
    const TestContainer container(New().Object());
    const auto inPlace = container.As<IOleInPlaceObject>();
    EXPECT_EQ(container.ControlWindow(), nullptr);
    EXPECT_EQ(inPlace->UIDeactivate(), S_OK) << "nothing to do";
    EXPECT_EQ(inPlace->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(container.TakeNotes(), Notes{});

    EXPECT_EQ(container.DoVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_EQ(container.TakeNotes(), (Notes{"OnInPlaceActivate", "ShowObject"}));
    const HWND window = container.ControlWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetParent(window), container.Window());
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_FALSE(HasFocusWithin(window));

    EXPECT_EQ(container.DoVerb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(container.DoVerb(OLEIVERB_PRIMARY), S_OK) << "active already";
    EXPECT_EQ(container.TakeNotes(), Notes{"OnUIActivate"});
    EXPECT_TRUE(container.Site().Surroundings().ActiveObject() != nullptr);
    EXPECT_TRUE(HasFocusWithin(window));

    EXPECT_EQ(inPlace->UIDeactivate(), S_OK);
    EXPECT_EQ(container.TakeNotes(), Notes{"OnUIDeactivate"});
    EXPECT_TRUE(container.Site().Surroundings().ActiveObject() == nullptr);
    EXPECT_EQ(container.ControlWindow(), window);

    EXPECT_EQ(container.DoVerb(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(container.DoVerb(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(container.TakeNotes(),
              (Notes{"OnUIActivate", "OnUIDeactivate", "OnInPlaceDeactivate"}));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(container.DoVerb(7), OLEOBJ_S_INVALIDVERB);
    EXPECT_TRUE(FAILED(container.DoVerb(-99)));
}

TEST_P(Containers, MayRefuseActivation) {
    const TestContainer container(New().Object());
    container.Site().MayActivate = false;
    EXPECT_TRUE(FAILED(container.DoVerb(OLEIVERB_SHOW)));
    EXPECT_EQ(container.TakeNotes(), Notes{});
    container.Site().MayActivate = true;
    container.Site().HasWindow = false;
    EXPECT_TRUE(FAILED(container.DoVerb(OLEIVERB_SHOW)));
    EXPECT_EQ(container.TakeNotes(), (Notes{"OnInPlaceActivate", "OnInPlaceDeactivate"}));
    EXPECT_EQ(container.ControlWindow(), nullptr);
}

TEST_P(Containers, CloseAndTakeTheirSiteBackWhileTheControlIsActive) {
    const Notes deactivation{"OnUIDeactivate", "OnInPlaceDeactivate"};
    const TestContainer container(New().Object());
    container.DoVerb(OLEIVERB_UIACTIVATE);
    container.TakeNotes();
    EXPECT_EQ(container.Object().Close(OLECLOSE_NOSAVE), S_OK);
    Notes closing = deactivation;
    closing.emplace_back("OnClose");
    EXPECT_EQ(container.TakeNotes(), closing);

    container.DoVerb(OLEIVERB_UIACTIVATE);
    container.TakeNotes();
    EXPECT_EQ(container.Object().SetClientSite(nullptr), S_OK);
    EXPECT_EQ(container.TakeNotes(), deactivation);
    EXPECT_EQ(container.DoVerb(OLEIVERB_SHOW), E_UNEXPECTED);
    EXPECT_EQ(container.Object().SetClientSite(&container.Site()), S_OK);
    EXPECT_EQ(container.DoVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
}

// A container that goes without a word, and a site that goes before its control.
TEST_P(Containers, MayDropAnActiveControl) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 100,
                                        nullptr, nullptr, nullptr, nullptr);
    auto site = windows::MakeCom<ContainerSite>(window);
    {
        const LateBound control = New();
        ComPtr<IOleObject> object;
        control.Object()->QueryInterface(IID_IOleObject,
                                         reinterpret_cast<void**>(object.GetAddressOf()));
        object->SetClientSite(site.Get());
        EXPECT_EQ(object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site.Get(), 0, window, &site->place),
                  S_OK);
        site->Surroundings().SetActiveObject(nullptr, nullptr);
    }
    EXPECT_EQ(site->Noted.back(), "OnInPlaceDeactivate");
    EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
    EXPECT_EQ(GetParam().library().ObjectCount(), 0);
    DestroyWindow(window);
}

struct Comeback {
    const char* name;
    HRESULT (*act)(const TestContainer& container);
};

// From within each call that a control makes to its container, the container does something to it.
TEST_P(Containers, MayComeBackFromWithinEachCall) {
    constexpr std::array<Comeback, 5> comebacks{{
        {"InPlaceDeactivate",
         [](const TestContainer& at) { return at.As<IOleInPlaceObject>()->InPlaceDeactivate(); }},
        {"UIDeactivate",
         [](const TestContainer& at) { return at.As<IOleInPlaceObject>()->UIDeactivate(); }},
        {"Close", [](const TestContainer& at) { return at.Object().Close(OLECLOSE_NOSAVE); }},
        {"no site", [](const TestContainer& at) { return at.Object().SetClientSite(nullptr); }},
        {"DoVerb", [](const TestContainer& at) { return at.DoVerb(OLEIVERB_UIACTIVATE); }},
    }};
    for (const char* call :
         {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindow", "GetWindowContext", "ShowObject",
          "OnUIActivate", "SetActiveObject", "SetBorderSpace", "OnViewChange",
          "TranslateAccelerator", "OnUIDeactivate", "OnInPlaceDeactivate", "OnClose"}) {
        for (const Comeback& comeback : comebacks) {
            SCOPED_TRACE(std::string(comeback.name) + " from within " + call);
            const TestContainer container(New().Object());
            int calls = 0;
            container.Site().OnCall = [&](const std::string& made) {
                if (made == call) {
                    ++calls;
                    comeback.act(container);
                }
            };
            container.DoVerb(OLEIVERB_INPLACEACTIVATE);
            container.DoVerb(OLEIVERB_UIACTIVATE);
            SIZEL extent{2540, 1270};
            container.Object().SetExtent(DVASPECT_CONTENT, &extent);
            MSG key{container.ControlWindow(), WM_KEYDOWN, VK_F5, 0, 0, {}};
            container.As<IOleInPlaceActiveObject>()->TranslateAccelerator(&key);
            container.As<IOleInPlaceObject>()->UIDeactivate();
            container.Object().Close(OLECLOSE_NOSAVE);
            EXPECT_GT(calls, 0);
            container.Site().OnCall = nullptr;
            container.Object().Close(OLECLOSE_NOSAVE);
            EXPECT_EQ(container.ControlWindow(), nullptr);
            EXPECT_EQ(GetWindow(container.Window(), GW_CHILD), nullptr) << "a window is left";
            const Notes notes = container.TakeNotes();
            EXPECT_EQ(std::count(notes.begin(), notes.end(), "OnInPlaceActivate"),
                      std::count(notes.begin(), notes.end(), "OnInPlaceDeactivate"));
        }
    }
}

// The last reference goes while the control calls.
TEST_P(Containers, MayDropAControlFromWithinEachCall) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 100,
                                        nullptr, nullptr, nullptr, nullptr);
    for (const char* call :
         {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindow", "GetWindowContext", "ShowObject",
          "OnUIActivate", "SetActiveObject", "SetBorderSpace"}) {
        SCOPED_TRACE(call);
        const auto site = windows::MakeCom<ContainerSite>(window);
        ComPtr<IOleObject> object;
        New().Object()->QueryInterface(IID_IOleObject,
                                       reinterpret_cast<void**>(object.GetAddressOf()));
        IOleObject* const control = object.Get();
        control->SetClientSite(site.Get());
        site->OnCall = [&](const std::string& made) {
            if (made == call) {
                site->Surroundings().SetActiveObject(nullptr, nullptr);
                object.Reset();
            }
        };
        control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site.Get(), 0, window, &site->place);
        site->Surroundings().SetActiveObject(nullptr, nullptr);
        EXPECT_EQ(object.Get(), nullptr);
        EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
        EXPECT_EQ(GetParam().library().ObjectCount(), 0);
    }
    DestroyWindow(window);
}

TEST_P(Containers, AreToldOfArgumentsThatAreMissing) {
    const LateBound control = New();
    IDispatch& members = *control.Object();
    DISPID id = 0;
    LPOLESTR noName = nullptr;
    EXPECT_EQ(members.GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(members.GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(members.GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER);
    EXPECT_EQ(members.GetIDsOfNames(IID_NULL, &noName, 1, 0, nullptr), E_POINTER);
    EXPECT_EQ(members.GetIDsOfNames(IID_NULL, &noName, 1, 0, &id), E_INVALIDARG);
    const auto invoke = [&](DISPPARAMS* parameters) {
        return members.Invoke(1, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr,
                              nullptr);
    };
    DISPPARAMS noValues{nullptr, nullptr, 1, 0};
    DISPPARAMS noNames{nullptr, nullptr, 0, 1};
    EXPECT_EQ(invoke(nullptr), E_POINTER);
    EXPECT_EQ(invoke(&noValues), E_INVALIDARG);
    EXPECT_EQ(invoke(&noNames), E_INVALIDARG);

    const TestContainer container(control.Object());
    const RECTL place{0, 0, 10, 10};
    EXPECT_EQ(container.As<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr), E_POINTER);
    EXPECT_EQ(container.Object().Advise(&container.Site(), nullptr), E_POINTER);
    EXPECT_EQ(container.Object().EnumAdvise(nullptr), E_POINTER);
    EXPECT_EQ(container.As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr,
                                                 nullptr, &place, nullptr, nullptr, 0),
              E_INVALIDARG);
}

TEST_P(Containers, MeasureInHimetricAndPlaceInPixels) {
    const TestContainer container(New().Object());
    SIZEL extent{};
    EXPECT_EQ(container.Object().GetExtent(DVASPECT_CONTENT, &extent), S_OK);
    EXPECT_EQ(extent.cx, GetParam().extent.cx);
    EXPECT_EQ(extent.cy, GetParam().extent.cy);
    SIZEL wide{2540, 1270};
    EXPECT_EQ(container.Object().SetExtent(DVASPECT_CONTENT, &wide), S_OK);
    EXPECT_EQ(container.TakeNotes(), Notes{"OnViewChange"});
    EXPECT_EQ(container.As<IViewObject2>()->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent),
              S_OK);
    EXPECT_EQ(extent.cx, 2540);
    EXPECT_EQ(container.Object().SetExtent(DVASPECT_ICON, &wide), DV_E_DVASPECT);
    EXPECT_EQ(container.Object().SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);

    container.DoVerb(OLEIVERB_INPLACEACTIVATE);
    const RECT place{20, 30, 140, 70};
    const RECT clip{0, 0, 100, 100};
    EXPECT_EQ(container.As<IOleInPlaceObject>()->SetObjectRects(&place, &clip), S_OK);
    RECT now{};
    GetWindowRect(container.ControlWindow(), &now);
    MapWindowPoints(nullptr, container.Window(), reinterpret_cast<POINT*>(&now), 2);
    EXPECT_TRUE(EqualRect(&now, &place));
    EXPECT_EQ(container.As<IOleInPlaceObject>()->SetObjectRects(nullptr, &clip), E_POINTER);
}

TEST_P(Containers, DrawAnInactiveControlInAnyMappingMode) {
    const LateBound control = New();
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    const RECT bounds{10, 10, 190, 40};
    {
        const Canvas canvas;
        EXPECT_EQ(OleDraw(control.Object(), DVASPECT_CONTENT, canvas.Context(), &bounds), S_OK);
        EXPECT_EQ(canvas.At(188, 11), face);
        EXPECT_EQ(canvas.At(5, 5), RGB(0, 0, 0));
        EXPECT_EQ(canvas.At(195, 45), RGB(0, 0, 0));
    }
    {
        const Canvas canvas;
        SetMapMode(canvas.Context(), MM_ANISOTROPIC);
        SetWindowExtEx(canvas.Context(), 2000, 1000, nullptr);
        SetViewportExtEx(canvas.Context(), 200, 100, nullptr);
        const RECT logical{100, 100, 1900, 400};
        EXPECT_EQ(OleDraw(control.Object(), DVASPECT_CONTENT, canvas.Context(), &logical), S_OK);
        EXPECT_EQ(canvas.At(188, 11), face);
        EXPECT_EQ(canvas.At(195, 45), RGB(0, 0, 0));
        EXPECT_EQ(GetMapMode(canvas.Context()), MM_ANISOTROPIC) << "as the container left it";
    }
    const HDC metafile = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(OleDraw(control.Object(), DVASPECT_CONTENT, metafile, &bounds), S_OK);
    const HENHMETAFILE recorded = CloseEnhMetaFile(metafile);
    {
        const Canvas canvas;
        ENHMETAHEADER header{};
        GetEnhMetaFileHeader(recorded, sizeof header, &header);
        const RECT drawn{header.rclBounds.left, header.rclBounds.top, header.rclBounds.right,
                         header.rclBounds.bottom};
        EXPECT_GE(drawn.left, 9);
        EXPECT_LE(drawn.right, 191);
        EXPECT_GT(drawn.right - drawn.left, 100);
    }
    DeleteEnhMetaFile(recorded);
    const Canvas canvas;
    const RECT nothing{10, 10, 10, 10};
    EXPECT_EQ(OleDraw(control.Object(), DVASPECT_CONTENT, canvas.Context(), &nothing), S_OK);
    EXPECT_EQ(OleDraw(control.Object(), DVASPECT_ICON, canvas.Context(), &bounds), DV_E_DVASPECT);
}

TEST_P(Containers, TellOfAmbientPropertiesAndFreezes) {
    const TestContainer container(New().Object());
    const auto control = container.As<IOleControl>();
    for (const bool active : {false, true}) {
        for (const DISPID changed :
             {DISPID_AMBIENT_USERMODE, DISPID_AMBIENT_BACKCOLOR, DISPID_AMBIENT_FONT,
              DISPID_AMBIENT_DISPLAYNAME, DISPID_AMBIENT_UIDEAD, DISPID_UNKNOWN, 4711}) {
            EXPECT_EQ(control->OnAmbientPropertyChange(changed), S_OK) << changed << active;
        }
        EXPECT_EQ(control->FreezeEvents(FALSE), S_OK) << "without a freeze before it";
        EXPECT_EQ(container.DoVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
    }
    EXPECT_EQ(container.Object().SetHostNames(L"Tests", L"Document"), S_OK);
    LPOLESTR type = nullptr;
    EXPECT_EQ(container.Object().GetUserType(USERCLASSTYPE_FULL, &type), S_OK);
    EXPECT_NE(std::wstring(type), L"");
    CoTaskMemFree(type);
}

TEST_P(Containers, ReadTheControlsClassInformationAndFindOneIdentity) {
    const LateBound control = New();
    const auto information = TestContainer(control.Object()).As<IProvideClassInfo2>();
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(information->GetClassInfo(&type), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_EQ(attributes->guid, GetParam().id);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCONTROL, 0);
    type->ReleaseTypeAttr(attributes);
    EXPECT_EQ(information->GetClassInfo(nullptr), E_POINTER);
    ComPtr<IUnknown> identity;
    control.Object()->QueryInterface(IID_IUnknown,
                                     reinterpret_cast<void**>(identity.GetAddressOf()));
    for (const IID& id : {IID_IOleWindow, IID_IViewObject, IID_IPersist, IID_IProvideClassInfo,
                          IID_IOleInPlaceActiveObject, IID_IPersistStorage, IID_IDispatch}) {
        ComPtr<IUnknown> found;
        ComPtr<IUnknown> same;
        ASSERT_EQ(
            control.Object()->QueryInterface(id, reinterpret_cast<void**>(found.GetAddressOf())),
            S_OK);
        found->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(same.GetAddressOf()));
        EXPECT_EQ(same.Get(), identity.Get());
    }
}

// Whatever a new one writes, another reads; each is loaded once.
TEST_P(Containers, SaveAndLoadByPropertyBag) {
    const TestContainer container(New().Object());
    EXPECT_EQ(container.As<IPersistStreamInit>()->InitNew(), S_OK);
    CLSID id{};
    EXPECT_EQ(container.As<IPersistPropertyBag>()->GetClassID(&id), S_OK);
    EXPECT_EQ(id, GetParam().id);
    const auto bag = windows::MakeCom<DocumentBag>();
    EXPECT_EQ(container.As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE), S_OK);
    const auto empty = windows::MakeCom<DocumentBag>();
    for (const auto& document : {bag, empty}) {
        const TestContainer reader(New().Object());
        EXPECT_EQ(reader.As<IPersistPropertyBag>()->Load(document.Get(), nullptr), S_OK);
        EXPECT_EQ(reader.DoVerb(OLEIVERB_SHOW), S_OK);
    }
}

TEST_P(Containers, SaveAndLoadByStream) {
    const TestContainer container(New().Object());
    ComPtr<IStream> stream;
    CLSID id{};
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(container.As<IPersistStreamInit>()->InitNew(), S_OK);
    EXPECT_EQ(OleSaveToStream(container.As<IPersistStream>().Get(), stream.Get()), S_OK);
    EXPECT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_EQ(ReadClassStm(stream.Get(), &id), S_OK);
    EXPECT_EQ(id, GetParam().id);
    const TestContainer reader(New().Object());
    EXPECT_EQ(reader.As<IPersistStreamInit>()->Load(stream.Get()), S_OK);
    EXPECT_EQ(reader.DoVerb(OLEIVERB_SHOW), S_OK);
}

TEST_P(Containers, SaveAndLoadByStorage) {
    const TestContainer container(New().Object());
    ComPtr<ILockBytes> bytes;
    ComPtr<IStorage> storage;
    ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
    ASSERT_EQ(StgCreateDocfileOnILockBytes(
                  bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage),
              S_OK);
    EXPECT_EQ(container.As<IPersistStorage>()->InitNew(storage.Get()), S_OK);
    EXPECT_EQ(OleSave(container.As<IPersistStorage>().Get(), storage.Get(), TRUE), S_OK);
    EXPECT_EQ(container.As<IPersistStorage>()->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(container.As<IPersistStorage>()->HandsOffStorage(), S_OK);
    const TestContainer reader(New().Object());
    EXPECT_EQ(reader.As<IPersistStorage>()->Load(storage.Get()), S_OK);
    EXPECT_EQ(reader.As<IPersistStorage>()->HandsOffStorage(), S_OK);
    EXPECT_EQ(reader.DoVerb(OLEIVERB_SHOW), S_OK);
}

INSTANTIATE_TEST_SUITE_P(
    OfControls, Containers,
    ::testing::Values(
        TestedControl{"Toolbar", &TestedLibrary::Control, __uuidof(::KRVControl), {4445, 635}},
        TestedControl{
            "Discovery", &TestedLibrary::Suite, __uuidof(::CvnDiscoveryCtl), {12515, 8229}}),
    [](const auto& tested) { return tested.param.name; });

TEST(ContainersOfDiscovery, HoldItsEventsBack) {
    OleInitialize(nullptr);
    {
        const LateBound control = TestedLibrary::Suite().Create(__uuidof(::CvnDiscoveryCtl));
        const TestContainer container(control.Object());
        int changes = 0;
        const auto subscription =
            windows::SubscribeToEvents(control.Object(), __uuidof(DCvnDiscoveryEvents),
                                       [&](DISPID, const DISPPARAMS&) { ++changes; });
        const auto freeze = [&](BOOL frozen) { container.As<IOleControl>()->FreezeEvents(frozen); };
        control.Put(L"Address", L"sim://M7718C");
        freeze(TRUE);
        freeze(TRUE);
        control.Call(L"Connect");
        control.Call(L"Disconnect");
        freeze(FALSE);
        EXPECT_EQ(changes, 0);
        freeze(FALSE);
        EXPECT_EQ(changes, 1) << "that there was a change, once";
        control.Call(L"Connect");
        EXPECT_EQ(changes, 2);
        freeze(TRUE);
        freeze(FALSE);
        EXPECT_EQ(changes, 2);
    }
    EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
    OleUninitialize();
}

}  // namespace
}  // namespace krv::tests
