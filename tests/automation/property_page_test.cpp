// The property page of the controls, by itself and in frames, used as by keys and mouse.
#include <gtest/gtest.h>

#include <oleacc.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "automation/controls/pages/property_page.h"
#include "dialogs/answering.h"
#include "placed_control.h"
#include "support/holdings.h"

namespace tornby {
namespace {

using namespace testing;
using automation::property_page_id;

/// A frame's part of the talk with a page.
class FakePageSite final : public OnStack<IPropertyPageSite> {
 public:
  std::vector<DWORD> statuses;
  int keys = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE OnStatusChange(DWORD status) override {
    statuses.push_back(status);
    return E_FAIL;  // which is no reason for a page to stumble
  }
  HRESULT STDMETHODCALLTYPE GetLocaleID(LCID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*) override {
    ++keys;
    return S_OK;
  }
};

std::wstring text_of(HWND window) {
  wchar_t text[200] = {};
  ::SendMessageW(window, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
  return text;
}

/// The child that a label or its own text names, as it would be called to somebody who cannot see it.
HWND child_named(HWND parent, const std::wstring& name) {
  for (HWND child = ::GetWindow(parent, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
    std::wstring text = text_of(child);
    std::erase(text, L'&');
    std::erase(text, L':');
    wchar_t kind[20] = {};
    ::GetClassNameW(child, kind, 20);
    if (text == name && std::wstring(kind) == L"Button") return child;
    if (text == name && std::wstring(kind) == L"Static") return ::GetWindow(child, GW_HWNDNEXT);
  }
  ADD_FAILURE() << "no field " << std::string(name.begin(), name.end());
  return nullptr;
}

void click(HWND button) {
  ::SendMessageW(button, BM_CLICK, 0, 0);
}
void type(HWND field, const wchar_t* text) {
  ::SendMessageW(field, EM_SETSEL, 0, -1);
  ::SendMessageW(field, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text));
}
void choose(HWND list, int place) {
  ::SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  ::SendMessageW(::GetParent(list), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(list), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
}

/// A page of some objects, shown in the container's window.
struct OpenPage {
  template <class... Objects>
  OpenPage(const Server& server, FakeContainer& container, const Objects&... shown) {
    page = server.create<IPropertyPage2>(property_page_id);
    IUnknown* objects[] = {shown.get()...};
    EXPECT_EQ(page->SetPageSite(&site), S_OK);
    EXPECT_EQ(page->SetObjects(sizeof...(shown), objects), S_OK);
    EXPECT_EQ(page->Activate(container.window(), &place, FALSE), S_OK);
    EXPECT_EQ(page->Show(SW_SHOW), S_OK);
    window = ::GetWindow(container.window(), GW_CHILD);
  }
  ~OpenPage() {
    page->Deactivate();
    page->SetObjects(0, nullptr);
    page->SetPageSite(nullptr);
  }
  HWND field(const wchar_t* name) const { return child_named(window, name); }

  FakePageSite site;
  ComPtr<IPropertyPage2> page;
  RECT place = {0, 0, 400, 300};
  HWND window = nullptr;
};

std::wstring caption_of(IkelLabel* label) {
  Bstr caption;
  label->get_Caption(caption.address());
  return static_cast<BSTR>(caption);
}

TEST(PropertyPage, ChangesNothingBeforeItIsTold) {
  const Server server;
  FakeContainer container;
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  {
    const OpenPage open(server, container, label);
    EXPECT_EQ(text_of(open.field(L"Caption")), L"Label1");
    EXPECT_EQ(text_of(open.field(L"VerticalAlignment")), L"Centre");
    EXPECT_EQ(::SendMessageW(open.field(L"DisplayRubberBand"), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(open.page->IsPageDirty(), S_FALSE);
    EXPECT_FALSE(::IsWindowEnabled(open.field(L"Revert")));

    type(open.field(L"Caption"), L"Two\r\nlines");
    choose(open.field(L"VerticalAlignment"), 2);
    click(open.field(L"WordWrap"));
    EXPECT_EQ(open.site.statuses, (std::vector<DWORD>{PROPPAGESTATUS_DIRTY}));
    EXPECT_EQ(caption_of(label.get()), L"Label1");
    label->put_Caption(Bstr(L"by others"));
    label->put_AutoSize(VARIANT_FALSE);
    EXPECT_EQ(text_of(open.field(L"Caption")), L"Two\r\nlines") << "what the user has entered stays";
    EXPECT_EQ(::SendMessageW(open.field(L"AutoSize"), BM_GETCHECK, 0, 0), BST_UNCHECKED);

    EXPECT_EQ(open.page->Apply(), S_OK);
    EXPECT_EQ(open.page->IsPageDirty(), S_FALSE);
    EXPECT_EQ(open.site.statuses.back(), static_cast<DWORD>(PROPPAGESTATUS_CLEAN));
    LONG vertical = 0;
    VARIANT_BOOL wraps = VARIANT_FALSE;
    label->get_VerticalAlignment(&vertical);
    label->get_WordWrap(&wraps);
    EXPECT_EQ(caption_of(label.get()), L"Two\r\nlines");
    EXPECT_EQ(vertical, 2);
    EXPECT_EQ(wraps, VARIANT_TRUE);

    FakeView view;
    as<IViewObject2>(label)->SetAdvise(DVASPECT_CONTENT, 0, &view);
    choose(open.field(L"Alignment"), 1);
    EXPECT_EQ(open.page->Apply(), S_OK);
    EXPECT_GT(view.changes, 0) << "the text has moved";
    as<IViewObject2>(label)->SetAdvise(DVASPECT_CONTENT, 0, nullptr);

    click(open.field(L"Revert"));
    EXPECT_EQ(text_of(open.field(L"Caption")), L"Label1");
    EXPECT_EQ(caption_of(label.get()), L"Two\r\nlines");
    EXPECT_EQ(open.page->Apply(), S_OK);
    EXPECT_EQ(caption_of(label.get()), L"Label1");
    type(open.field(L"Caption"), L"never applied");
  }
  EXPECT_EQ(caption_of(label.get()), L"Label1");
}

/// Does something when it hears of a change.
class InterruptingSink final : public OnStack<IPropertyNotifySink> {
 public:
  std::function<void()> act;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = static_cast<IPropertyNotifySink*>(this);
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnChanged(DISPID) override {
    act();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }
};

TEST(PropertyPage, SurvivesAFrameThatLeavesWhileItApplies) {
  const Server server;
  FakeContainer container;
  InterruptingSink sink;
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  const Connection notices(label, IID_IPropertyNotifySink, &sink);
  const OpenPage open(server, container, label);
  sink.act = [&] {
    open.page->SetObjects(0, nullptr);
    open.page->Deactivate();
    EXPECT_EQ(open.page->Apply(), E_UNEXPECTED);
  };
  type(open.field(L"Caption"), L"applied");
  click(open.field(L"WordWrap"));
  EXPECT_EQ(open.page->Apply(), S_OK);
  VARIANT_BOOL wraps = VARIANT_FALSE;
  label->get_WordWrap(&wraps);
  EXPECT_EQ(caption_of(label.get()), L"applied");
  EXPECT_EQ(wraps, VARIANT_TRUE);
  EXPECT_EQ(::GetWindow(container.window(), GW_CHILD), nullptr);
}

TEST(PropertyPage, LeavesNothingBehind) {
  const Server server;
  FakeContainer container;
  expect_nothing_left_behind([&] {
    const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
    const OpenPage open(server, container, link);
    type(open.field(L"Caption"), L"applied");
    EXPECT_EQ(open.page->Apply(), S_OK);
    type(open.field(L"Caption"), L"cancelled");
  });
  EXPECT_TRUE(server.is_idle());
}

TEST(PropertyPage, ShowsSeveralObjectsAtOnce) {
  const Server server;
  FakeContainer container;
  const auto one = server.create<IkelLabel>(CLSID_kelLabel), other = server.create<IkelLabel>(CLSID_kelLabel);
  one->put_Caption(Bstr(L"one"));
  one->put_WordWrap(VARIANT_TRUE);
  one->put_VerticalAlignment(9);
  const OpenPage open(server, container, one, other);
  EXPECT_EQ(text_of(open.field(L"Caption")), L"");
  EXPECT_EQ(text_of(open.field(L"VerticalAlignment")), L"");
  EXPECT_EQ(::SendMessageW(open.field(L"WordWrap"), BM_GETCHECK, 0, 0), BST_INDETERMINATE);
  click(open.field(L"UseBorderLines"));
  EXPECT_EQ(open.page->Apply(), S_OK);
  EXPECT_EQ(caption_of(one.get()) + caption_of(other.get()), L"oneLabel1") << "they keep what differs";
  VARIANT_BOOL borders[2] = {};
  one->get_UseBorderLines(&borders[0]);
  other->get_UseBorderLines(&borders[1]);
  EXPECT_TRUE(borders[0] && borders[1]);
  type(open.field(L"Caption"), L"both");
  EXPECT_EQ(open.page->Apply(), S_OK);
  EXPECT_EQ(caption_of(one.get()) + caption_of(other.get()), L"bothboth");
  click(open.field(L"Revert"));
  EXPECT_EQ(open.page->Apply(), S_OK);
  EXPECT_EQ(caption_of(one.get()) + caption_of(other.get()), L"oneLabel1");

  // Of different classes only what they share, and a number without a name as a number.
  const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  IUnknown* mixed[] = {link.get(), one.get()};
  EXPECT_EQ(open.page->SetObjects(2, mixed), S_OK);
  const HWND shared = ::GetWindow(container.window(), GW_CHILD);
  EXPECT_EQ(text_of(child_named(shared, L"Alignment")), L"Left");
  IUnknown* alone = one.get();
  EXPECT_EQ(open.page->SetObjects(1, &alone), S_OK);
  EXPECT_EQ(text_of(child_named(::GetWindow(container.window(), GW_CHILD), L"VerticalAlignment")), L"9");
}

TEST(PropertyPage, ExplainsWhatCannotBeAppliedAndLosesNothing) {
  const Server server;
  FakeContainer container;
  const auto browse = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  const OpenPage open(server, container, browse);
  for (const wchar_t* number : {L"", L"many", L"12 3", L"99999999999", L"2147483648"}) {
    type(open.field(L"Text"), L"kept");
    type(open.field(L"MaxLength"), number);
    Answers answers{press(ok_button)};
    EXPECT_EQ(open.page->Apply(), CTL_E_INVALIDPROPERTYVALUE);
    EXPECT_EQ(answers.seen(), std::vector<std::string>{"Properties"});
    EXPECT_EQ(::GetFocus(), open.field(L"MaxLength"));
    Bstr text;
    browse->get_Text(text.address());
    EXPECT_EQ(::SysStringLen(text), 0u) << "nothing is written before all is right";
    EXPECT_EQ(open.page->IsPageDirty(), S_OK);
    EXPECT_EQ(text_of(open.field(L"Text")), L"kept");
  }
  type(open.field(L"MaxLength"), L" 12 ");
  EXPECT_EQ(open.page->Apply(), S_OK);
  LONG length = 0;
  browse->get_MaxLength(&length);
  EXPECT_EQ(length, 12);
}

/// Keys as a user presses them, into whatever has the focus when they arrive.
void press_keys(const std::vector<WORD>& keys, WORD held = 0) {
  std::vector<INPUT> inputs;
  const auto add = [&](WORD key, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki = {key, 0, flags, 0, 0};
    inputs.push_back(input);
  };
  if (held) add(held, 0);
  for (const WORD key : keys) add(key, 0), add(key, KEYEVENTF_KEYUP);
  if (held) add(held, KEYEVENTF_KEYUP);
  ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void CALLBACK close_window(HWND window, UINT, UINT_PTR, DWORD) {
  ::PostMessageW(window, WM_CLOSE, 0, 0);
}

/// Presses keys in a frame once it runs. One that they do not close is closed all the same, so that the test fails.
Answers::Answer with_keys(std::function<void()> press) {
  return when_running([=](const OpenDialog& frame) {
    constexpr UINT_PTR watch = 1;
    constexpr UINT patience = 20'000;
    ::SetTimer(frame.window(), watch, patience, close_window);
    ::SetForegroundWindow(frame.window());  // where keys go to
    press();
  });
}

std::wstring seen_in_focus;

/// Looks what stands in the field once all keys have arrived, and goes.
void CALLBACK look_and_leave(HWND, UINT, UINT_PTR timer, DWORD) {
  ::KillTimer(nullptr, timer);
  seen_in_focus = text_of(::GetFocus());
  press_keys({VK_ESCAPE});
}

/// The pages of an object in the system's frame, as the DLL's classes are known by its manifest.
void show_system_frame(IUnknown* object, HWND owner) {
  const ManifestActivation known;
  CLSID pages[] = {property_page_id, CLSID_CFontPropPage};
  EXPECT_EQ(::OleCreatePropertyFrame(owner, 0, 0, L"Label1", 1, &object, 2, pages, LOCALE_USER_DEFAULT, 0, nullptr),
            S_OK);
}

TEST(PropertyPage, IsDrivenByKeysInFrames) {
  const Server server;
  FakeContainer container;
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  const auto type_and = [](std::vector<WORD> later, WORD last) {
    return with_keys([=] {
      press_keys({'C'}, VK_MENU);              // to the caption, which is selected
      press_keys({'X', 'Y', VK_TAB, VK_END});  // and the last of the alignments
      if (!later.empty()) press_keys({'A'}, VK_MENU);
      press_keys(later);
      press_keys({last});
    });
  };
  const auto state = [&] {
    SHORT alignment = 0;
    label->get_Alignment(&alignment);
    return caption_of(label.get()) + std::to_wstring(alignment);
  };
  {
    Answers answers{with_keys([] {
      press_keys({'C'}, VK_MENU);
      press_keys({'X', 'Y'});
      constexpr UINT after_them = 100;
      ::SetTimer(nullptr, 0, after_them, look_and_leave);
    })};
    show_system_frame(label.get(), container.window());
    EXPECT_EQ(seen_in_focus, L"xy");
    EXPECT_EQ(state(), L"Label10");
  }
  const auto after = [&](const Answers::Answer& keys) {
    Answers answers{keys};
    EXPECT_EQ(as<IOleObject>(label)->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, container.window(), nullptr),
              S_OK);
    EXPECT_TRUE(answers.all_given());
    return state();
  };
  EXPECT_EQ(after(type_and({}, VK_ESCAPE)), L"Label10");
  EXPECT_EQ(after(type_and({}, VK_RETURN)), L"xy2");
  label->put_Caption(Bstr(L"again"));
  label->put_Alignment(0);
  EXPECT_EQ(after(type_and({'C', 'Z'}, VK_ESCAPE)), L"xy2") << "as applied, not as typed later";
}

TEST(PropertyPage, AnswersFramesThatPassKeysOn) {
  const Server server;
  FakeContainer container;
  const auto browse = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  const OpenPage open(server, container, browse);
  const auto pass = [&](UINT message, WPARAM key) {
    MSG passed = {::GetFocus(), message, key, message == WM_SYSCHAR ? 1 << 29 : 1, 0, {}};
    return open.page->TranslateAccelerator(&passed);
  };
  EXPECT_EQ(open.page->EditProperty(DISPID_TEXT), S_OK);
  EXPECT_EQ(open.page->EditProperty(DISPID_FONT), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(::GetFocus(), open.field(L"Text"));
  EXPECT_EQ(pass(WM_KEYDOWN, VK_TAB), S_OK);
  EXPECT_EQ(::GetFocus(), open.field(L"BorderApperance"));
  EXPECT_EQ(pass(WM_SYSCHAR, 'm'), S_OK);
  EXPECT_EQ(::GetFocus(), open.field(L"MaxLength"));
  EXPECT_EQ(text_of(::GetWindow(open.field(L"Revert"), GW_HWNDPREV)),
            L"The most characters that can be typed; 0 is no limit");
  for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) EXPECT_EQ(pass(WM_KEYDOWN, key), S_FALSE) << "the frame's";
  EXPECT_EQ(pass(WM_SYSCHAR, 'a'), S_FALSE) << "Apply";
  EXPECT_EQ(open.site.keys, 0);
  ::SetFocus(open.field(L"ReadOnly"));
  EXPECT_EQ(pass(WM_KEYDOWN, VK_TAB), S_OK);
  EXPECT_EQ(open.site.keys, 1) << "where the last field leads to is the frame's to say";

  // A list is named by its label too, but not under Wine.
  for (const auto& [name, spoken] :
       {std::pair(L"Text", L"Text:"), {L"MaxLength", L"MaxLength:"}, {L"Locked", L"Locked"}}) {
    ComPtr<IAccessible> accessible;
    Bstr said;
    VARIANT self = long_variant(CHILDID_SELF);
    ASSERT_EQ(
        ::AccessibleObjectFromWindow(open.field(name), OBJID_CLIENT, __uuidof(IAccessible), accessible.out_void()),
        S_OK);
    EXPECT_EQ(accessible->get_accName(self, said.address()), S_OK);
    EXPECT_STREQ(said, spoken);
  }
  PROPPAGEINFO info = {};  // of no size, as some frames leave it
  ASSERT_EQ(open.page->GetPageInfo(&info), S_OK);
  std::ifstream help(std::filesystem::path(info.pszHelpFile));
  const std::string anchor = " id=\"" + std::to_string(info.dwHelpContext) + "\"";
  EXPECT_NE(std::string(std::istreambuf_iterator<char>(help), {}).find(anchor), std::string::npos);
  for (LPOLESTR text : {info.pszTitle, info.pszDocString, info.pszHelpFile}) ::CoTaskMemFree(text);
  const RECT page = {0, 0, info.size.cx, info.size.cy};
  for (HWND child = ::GetWindow(open.window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
    RECT place = {}, both = {};
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, open.window, reinterpret_cast<POINT*>(&place), 2);
    ::IntersectRect(&both, &place, &page);
    EXPECT_TRUE(::EqualRect(&both, &place)) << place.right << " " << place.bottom;
  }

  IUnknown* none = nullptr;
  FakePageSite second;
  EXPECT_EQ(open.page->SetPageSite(&second), E_UNEXPECTED);
  EXPECT_EQ(open.page->SetObjects(1, &none), E_POINTER);
  EXPECT_EQ(open.page->SetObjects(1, nullptr), E_POINTER);
  EXPECT_EQ(open.page->Activate(container.window(), &page, FALSE), E_UNEXPECTED);
  EXPECT_EQ(open.page->Deactivate(), S_OK);
  for (const HRESULT result : {open.page->Deactivate(), open.page->Show(SW_SHOW), open.page->Move(&page)})
    EXPECT_EQ(result, E_UNEXPECTED);
}

}  // namespace
}  // namespace tornby
