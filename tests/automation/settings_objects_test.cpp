#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "placed_control.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::call;
using testing::ComPtr;
using testing::long_variant;
using testing::Outcome;
using testing::OwnedVariant;
using testing::Server;

using Texts = std::vector<std::wstring>;

/// What an enumerator gives, a few at a time.
Texts walk(IUnknown* source, const wchar_t* member_of_items = nullptr) {
  Texts texts;
  ComPtr<IEnumVARIANT> items;
  EXPECT_EQ(source->QueryInterface(IID_IEnumVARIANT, items.out_void()), S_OK);
  for (;;) {
    VARIANT some[3] = {};
    ULONG count = 0;
    const HRESULT result = items->Next(3, some, &count);
    EXPECT_EQ(result, count == 3 ? S_OK : S_FALSE);
    for (ULONG i = 0; i < count; ++i) {
      OwnedVariant item(some[i]);
      if (member_of_items) {
        EXPECT_EQ(item->vt, VT_DISPATCH);
        Outcome outcome;
        call(outcome, item->pdispVal, member_of_items, DISPATCH_PROPERTYGET);
        texts.emplace_back(outcome.value->bstrVal);
      } else {
        EXPECT_EQ(item->vt, VT_BSTR);
        texts.emplace_back(item->bstrVal);
      }
    }
    if (result != S_OK) return texts;
  }
}

Texts strings_of(IStringCollection* strings) {
  ComPtr<IUnknown> enumerator;
  EXPECT_EQ(strings->get__NewEnum(enumerator.out()), S_OK);
  return walk(enumerator.get());
}

TEST(ValueCollectionObject, PairsKeepTheirIdentity) {
  const Server server;
  {
    const auto values = server.create<IValueCollection>(CLSID_ValueCollection);
    ComPtr<IPropertyClass> added, found, none;
    ASSERT_EQ(values->Add(Bstr(L"Width"), Bstr(L"1"), added.out()), S_OK);
    ASSERT_EQ(values->Item(long_variant(1), found.out()), S_OK);
    EXPECT_EQ(found.get(), added.get());
    EXPECT_EQ(values->Add(Bstr(L"WIDTH"), Bstr(L"2"), none.out()), S_OK);
    EXPECT_EQ(none.get(), nullptr);
    VARIANT nothing = {};
    nothing.vt = VT_NULL;
    EXPECT_EQ(values->Item(nothing, none.out()), S_OK);
    EXPECT_EQ(none.get(), nullptr);
    found = ComPtr<IPropertyClass>();
    added = ComPtr<IPropertyClass>();
    ASSERT_EQ(values->Item(long_variant(1), found.out()), S_OK);  // a new object around the same pair
    ASSERT_EQ(values->Remove(long_variant(1)), S_OK);
    Bstr value;
    EXPECT_EQ(found->get_Value(value.address()), S_OK);
    EXPECT_STREQ(value, L"1");
  }
  EXPECT_TRUE(server.is_idle());
}

TEST(ValueCollectionObject, EnumeratorsResetCloneAndKeepTheCollectionAlive) {
  const Server server;
  {
    ComPtr<IEnumVARIANT> items, clone;
    {
      const auto values = server.create<IValueCollection>(CLSID_ValueCollection);
      ComPtr<IPropertyClass> pair;
      for (const wchar_t* key : {L"A", L"B", L"C", L"D"})
        ASSERT_EQ(values->Add(Bstr(key), Bstr(key), pair.out()), S_OK);
      ComPtr<IUnknown> enumerator;
      ASSERT_EQ(values->NewEnum(enumerator.out()), S_OK);
      ASSERT_EQ(enumerator->QueryInterface(IID_IEnumVARIANT, items.out_void()), S_OK);
      ASSERT_EQ(items->Skip(2), S_OK);
      ASSERT_EQ(items->Clone(clone.out()), S_OK);
      OwnedVariant key(testing::string_variant(L"c"));
      ASSERT_EQ(values->Remove(*key), S_OK);
    }
    EXPECT_EQ(walk(clone.get(), L"Key"), Texts({L"D"}));
    EXPECT_EQ(items->Skip(2), S_FALSE);
    ASSERT_EQ(items->Reset(), S_OK);
    EXPECT_EQ(walk(items.get(), L"Key"), Texts({L"A", L"B", L"D"}));
  }
  EXPECT_TRUE(server.is_idle());
}

TEST(XML_SettingsObject, EventsReachASinkAndItsChangesTakeEffect) {
  const Server server;
  {
    const auto settings = server.create<IXML_Settings>(CLSID_XML_Settings);
    ASSERT_EQ(settings->SetContents(Bstr(L"<ABC>\r\n<X>1</X>\r\n</ABC>")), S_OK);
    testing::FakeSink sink;
    std::vector<LONG> maxima, positions;
    bool meddles = false;
    sink.on_event = [&](DISPID id, DISPPARAMS* parameters) {
      EXPECT_EQ(parameters->cArgs, 1u);
      EXPECT_EQ(parameters->rgvarg[0].vt, VT_BYREF | VT_I4);
      LONG& figure = *parameters->rgvarg[0].plVal;
      (id == 1 ? maxima : positions).push_back(figure);
      if (meddles) figure = 1000;
    };
    const testing::Connection events(settings, DIID_DXML_SettingsEvents, static_cast<IDispatch*>(&sink));

    ComPtr<IStringCollection> items;
    ASSERT_EQ(settings->ExtractBlock(Bstr(L"abc"), items.out()), S_OK);
    EXPECT_EQ(strings_of(items.get()), Texts({L"1"}));
    EXPECT_EQ(maxima, std::vector<LONG>({23}));
    EXPECT_EQ(positions.front(), 2);

    meddles = true;
    ASSERT_EQ(settings->ExtractBlock(Bstr(L"abc"), items.out()), S_OK);
    EXPECT_TRUE(strings_of(items.get()).empty());  // sent past the end at once
    LONG maximum = 0;
    EXPECT_EQ(settings->get_MaxElements(&maximum), S_OK);
    EXPECT_EQ(maximum, 1000);
  }
  EXPECT_TRUE(server.is_idle());
}

TEST(XML_SettingsObject, ResultsOfEveryKindArrive) {
  const Server server;
  {
    const auto settings = server.create<IXML_Settings>(CLSID_XML_Settings);
    ComPtr<IStringCollection> items;
    SAFEARRAY* files = nullptr;
    ASSERT_EQ(settings->UpdateRecent(Bstr(L"C:\\a")), S_OK);
    ASSERT_EQ(settings->ExtractRecent(&files), S_OK);
    VARTYPE type = VT_EMPTY;
    EXPECT_EQ(::SafeArrayGetVartype(files, &type), S_OK);
    EXPECT_EQ(type, VT_BSTR);
    ASSERT_EQ(files->rgsabound[0].cElements, 1u);
    EXPECT_STREQ(static_cast<BSTR*>(files->pvData)[0], L"C:\\a");
    ::SafeArrayDestroy(files);

    ASSERT_EQ(settings->SetContents(Bstr(L"<a>1</a> <b>2</b>")), S_OK);
    ASSERT_EQ(settings->FindNodes(items.out()), S_OK);
    OwnedVariant key(testing::string_variant(L"<B>")), none(testing::string_variant(L"c"));
    Bstr item;
    EXPECT_EQ(items->get_Item(*key, item.address()), S_OK);
    EXPECT_STREQ(item, L"<b>");
    Bstr missing;
    EXPECT_EQ(static_cast<ULONG>(items->get_Item(*none, missing.address())), 0x800A0005ul);
    ::SetErrorInfo(0, nullptr);
  }
  EXPECT_TRUE(server.is_idle());
}

}  // namespace
}  // namespace tornby
