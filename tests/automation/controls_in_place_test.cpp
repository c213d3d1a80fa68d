// The ActiveX controls in a container that states which calls it expects, and that exactly those come.
#include <gtest/gtest.h>

#include "placed_control.h"
#include "support/holdings.h"

namespace tornby {
namespace {

using namespace testing;

constexpr const CLSID* all_controls[] = {&CLSID_kelLabel, &CLSID_kelHyperLabel, &CLSID_kelBrowseButton};

/// The edit field of a browse button, else the control's own window.
HWND keyboard_window(HWND control) {
  const HWND inner = ::GetWindow(control, GW_CHILD);
  return inner ? inner : control;
}

TEST(ControlsInPlace, ComeAndGoInOrder) {
  const Server server;
  for (const CLSID* clsid : all_controls) {
    const bool has_keyboard = *clsid != CLSID_kelLabel;
    FakeContainer container;
    {
      Placed<IDispatch> placed(server, *clsid, container);
      EXPECT_TRUE(::IsWindow(placed.window));
      EXPECT_EQ(::GetParent(placed.window), container.window());
      const std::string resized = *clsid == CLSID_kelLabel        ? "OnPosRectChange OnPosRectChange "  // width, height
                                  : *clsid == CLSID_kelHyperLabel ? "OnPosRectChange "
                                                                  : "";
      EXPECT_EQ(container.calls(), "CanInPlaceActivate OnInPlaceActivate GetWindowContext " + resized + "ShowObject ");
      const auto verb = [&](LONG number) {
        return placed.object->DoVerb(number, nullptr, &container, 0, nullptr, nullptr);
      };
      EXPECT_EQ(verb(OLEIVERB_UIACTIVATE), S_OK);
      EXPECT_EQ(verb(OLEIVERB_UIACTIVATE), S_OK);
      EXPECT_EQ(container.calls(), has_keyboard ? "OnUIActivate OnFocus " : "");
      EXPECT_EQ(::GetFocus() == keyboard_window(placed.window), has_keyboard);
      ::SetFocus(container.window());
      EXPECT_EQ(container.calls(), has_keyboard ? "OnFocusLost " : "");
      EXPECT_EQ(placed.in_place->InPlaceDeactivate(), S_OK);
      EXPECT_EQ(container.calls(), has_keyboard ? "OnUIDeactivate OnInPlaceDeactivate " : "OnInPlaceDeactivate ");
      EXPECT_EQ(placed.in_place->InPlaceDeactivate(), S_OK);
      EXPECT_EQ(placed.in_place->UIDeactivate(), S_OK);
      EXPECT_EQ(container.calls(), "");
      EXPECT_FALSE(::IsWindow(placed.window));
      EXPECT_EQ(verb(1234), OLEOBJ_S_INVALIDVERB);
      EXPECT_EQ(verb(-1234), E_NOTIMPL);
      EXPECT_EQ(verb(OLEIVERB_SHOW), S_OK);
      container.calls();
    }
    EXPECT_EQ(container.calls(), "OnInPlaceDeactivate ");
    EXPECT_TRUE(server.is_idle());
  }
}

TEST(ControlsInPlace, AContainerMayRefuse) {
  const Server server;
  FakeContainer container;
  container.allows_activation = false;
  const auto object = server.create<IOleObject>(CLSID_kelLabel);
  EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_UNEXPECTED) << "without a site";
  object->SetClientSite(&container);
  EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_FAIL);
  EXPECT_EQ(container.calls(), "CanInPlaceActivate ");
  object->SetClientSite(nullptr);
}

TEST(ControlsInPlace, TheKeyboardActivatesThem) {
  const Server server;
  FakeContainer container;
  Placed<IkelBrowseButton> placed(server, CLSID_kelBrowseButton, container);
  const HWND edit = keyboard_window(placed.window);
  container.calls();
  ::SetFocus(edit);  // as by a click
  EXPECT_EQ(container.calls(), "OnUIActivate OnFocus ");

  placed.control->put_Text(Bstr(L"abc"));
  ::SendMessageA(edit, EM_SETSEL, 0, 0);
  const auto active = as<IOleInPlaceActiveObject>(placed.control);
  const auto press = [&](WPARAM key) {
    MSG message = {edit, WM_KEYDOWN, key, 1, 0, {}};
    return active->TranslateAccelerator(&message);
  };
  EXPECT_EQ(press(VK_RIGHT), S_OK);
  EXPECT_EQ(container.calls(), "");
  DWORD start = 0;
  ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
  EXPECT_EQ(start, 1u) << "the field has its arrow keys";
  EXPECT_EQ(press(VK_TAB), S_OK);
  EXPECT_EQ(container.calls(), "TranslateAccelerator ") << "and the container its tab key";
}

TEST(ControlsInPlace, MnemonicsWork) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  Placed<IkelHyperLabel> placed(server, CLSID_kelHyperLabel, container);
  const Connection events(placed.control, __uuidof(DkelHyperLabelEvents), static_cast<IDispatch*>(&sink));
  const auto control = as<IOleControl>(placed.control);
  CONTROLINFO info = {};
  EXPECT_EQ(control->GetControlInfo(&info), E_INVALIDARG);
  info.cb = sizeof info;
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  EXPECT_EQ(info.cAccel, 0);
  EXPECT_EQ(info.dwFlags, static_cast<DWORD>(CTRLINFO_EATS_RETURN));
  container.calls();
  placed.control->put_Caption(Bstr(L"&Visit"));
  placed.control->put_Caption(Bstr(L"&Visit again"));
  EXPECT_EQ(container.calls(), "OnControlInfoChanged ");
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  for (const WPARAM letter : {L'v', L'V', L'a'}) {
    MSG message = {container.window(), WM_SYSCHAR, letter, 1 << 29, 0, {}};
    WORD command = 0;
    EXPECT_EQ(::IsAccelerator(info.hAccel, info.cAccel, &message, &command), letter != L'a');
  }
  EXPECT_EQ(control->OnMnemonic(nullptr), S_OK);
  EXPECT_EQ(sink.events, (std::vector<DISPID>{DISPID_CLICK}));
}

TEST(ControlsInPlace, ShowOnlyWhatTheContainerShows) {
  const Server server;
  FakeContainer container;
  container.visible = {0, 0, 110, 40};  // of a control at 10, 10
  Placed<IkelBrowseButton> placed(server, CLSID_kelBrowseButton, container);
  RECT box = {};
  EXPECT_EQ(::GetWindowRgnBox(placed.window, &box), SIMPLEREGION);
  const RECT part = {0, 0, 100, 30};
  EXPECT_TRUE(::EqualRect(&box, &part));
  container.visible = {0, 0, 400, 300};
  EXPECT_EQ(placed.in_place->SetObjectRects(&container.place, &container.visible), S_OK);
  EXPECT_EQ(::GetWindowRgnBox(placed.window, &box), ERROR);
  const RECT outside = {300, 200, 400, 300};
  EXPECT_EQ(placed.in_place->SetObjectRects(&container.place, &outside), S_OK);
  EXPECT_EQ(::GetWindowRgnBox(placed.window, &box), NULLREGION);
}

TEST(ControlsInPlace, ALabelHoldsOtherControls) {
  const Server server;
  FakeContainer container;
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  placed.control->put_AutoSize(VARIANT_FALSE);
  const HWND inner =
      ::CreateWindowExA(0, "STATIC", "", WS_CHILD, 5, 5, 10, 10, placed.window, nullptr, nullptr, nullptr);
  const RECT place = {10, 10, 130, 70};
  EXPECT_EQ(placed.in_place->SetObjectRects(&place, &place), S_OK);
  RECT covered = {};
  ::GetClientRect(inner, &covered);
  EXPECT_EQ(covered.right, 120);
  EXPECT_EQ(covered.bottom, 60);

  FakeSink sink;
  const Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
  container.takes_message = [](UINT message) { return message == WM_RBUTTONDOWN; };
  ::SendMessageA(placed.window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
  ::SendMessageA(placed.window, WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events, (std::vector<DISPID>{2})) << "the container took the first message";
}

TEST(ControlsInPlace, RaiseEventsUnlessFrozen) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  const Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
  std::int16_t button = 0;
  sink.on_event = [&](DISPID, DISPPARAMS* parameters) {
    if (parameters->cArgs == 1 && parameters->rgvarg[0].vt == (VT_BYREF | VT_I2)) button = *parameters->rgvarg[0].piVal;
  };
  ::SendMessageA(placed.window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
  ::SendMessageA(placed.window, WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events, (std::vector<DISPID>{1, 2}));
  EXPECT_EQ(button, 2);

  const auto control = as<IOleControl>(placed.control);
  sink.events.clear();
  EXPECT_EQ(control->FreezeEvents(TRUE), S_OK);
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_TRUE(sink.events.empty());
  EXPECT_EQ(control->FreezeEvents(FALSE), S_OK);
  EXPECT_EQ(control->FreezeEvents(FALSE), E_UNEXPECTED);
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events, (std::vector<DISPID>{2}));
}

TEST(ControlsInPlace, OnlyShowThemselvesInADesigner) {
  const Server server;
  FakeContainer container;
  VARIANT user_mode = {};
  user_mode.vt = VT_BOOL;
  container.add_ambient(DISPID_AMBIENT_USERMODE, user_mode);
  FakeSink sink;
  const auto clicks = [&](const Placed<IkelBrowseButton>& placed) {
    sink.events.clear();
    RECT client = {};
    ::GetClientRect(placed.window, &client);
    const LPARAM at = MAKELPARAM(client.right - 5, client.bottom / 2);
    ::SendMessageA(placed.window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, at);
    ::SendMessageA(keyboard_window(placed.window), WM_CHAR, 'x', 0);
    ::SendMessageA(placed.window, BM_CLICK, 0, 0);
    as<IOleControl>(placed.control)->OnMnemonic(nullptr);
    return sink.events.size();
  };
  Placed<IkelBrowseButton> placed(server, CLSID_kelBrowseButton, container);
  const Connection events(placed.control, __uuidof(DkelBrowseButtonEvents), static_cast<IDispatch*>(&sink));
  EXPECT_EQ(clicks(placed), 0u);
  EXPECT_EQ(::GetCapture(), nullptr);
  for (const HWND window : {placed.window, keyboard_window(placed.window)})
    EXPECT_EQ(::SendMessageA(window, WM_NCHITTEST, 0, 0), HTTRANSPARENT) << "the pointer is the form's";
  user_mode.boolVal = VARIANT_TRUE;
  container.add_ambient(DISPID_AMBIENT_USERMODE, user_mode);
  EXPECT_EQ(as<IOleControl>(placed.control)->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
  EXPECT_EQ(clicks(placed), 3u + 2u + 2u + 2u);
}

TEST(ControlsInPlace, SurviveWhatASinkDoesInsideAnEvent) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  {
    Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
    Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
    sink.on_event = [&](DISPID, DISPPARAMS*) { events.leave(); };
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(sink.events.size(), 1u);
  }
  sink.events.clear();
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
  sink.on_event = [&](DISPID, DISPPARAMS*) {  // the form closes and forgets the control
    events.leave();
    placed.object->Close(OLECLOSE_NOSAVE);
    placed.object->SetClientSite(nullptr);
    container.active = nullptr;
    placed.in_place = ComPtr<IOleInPlaceObject>();
    placed.object = ComPtr<IOleObject>();
    placed.control = ComPtr<IkelLabel>();
  };
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events.size(), 1u);
  EXPECT_TRUE(server.is_idle());
}

TEST(ControlsInPlace, LeaveNothingBehind) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  const auto round = [&](REFCLSID clsid, REFIID event_set) {
    Placed<IDispatch> placed(server, clsid, container);
    const Connection events(placed.control, event_set, static_cast<IDispatch*>(&sink));
    placed.object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container, 0, nullptr, nullptr);
    ::UpdateWindow(placed.window);
    RECT client = {};
    ::GetClientRect(placed.window, &client);
    const LPARAM at = MAKELPARAM(client.right - 5, client.bottom / 2);
    ::SendMessageA(placed.window, WM_MOUSEMOVE, 0, at);
    ::SendMessageA(placed.window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, at);
  };
  expect_nothing_left_behind([&] {
    container.calls();
    sink.events.clear();
    round(CLSID_kelLabel, __uuidof(DkelLabelEvents));
    round(CLSID_kelHyperLabel, __uuidof(DkelHyperLabelEvents));
    round(CLSID_kelBrowseButton, __uuidof(DkelBrowseButtonEvents));
    EXPECT_EQ(sink.events.size(), 1u + 2u + 3u) << "MouseUp; Click, MouseUp; ControlClick, OpenBrowse, MouseUp";
  });
  EXPECT_EQ(container.references(), 0u);
  EXPECT_EQ(sink.references(), 0u);
  EXPECT_TRUE(server.is_idle());
}

}  // namespace
}  // namespace tornby
