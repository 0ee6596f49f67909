#include "windows/automation/VariantValue.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "tests/windows/support/AutomationTest.h"
#include "windows/automation/ArrayAccess.h"
#include "windows/automation/KeptVariant.h"

namespace krv::tests {
namespace {

using windows::CopyCells;
using windows::ToTexts;
using windows::ToValue;
using windows::ToVariant;

// Integers of all kinds lie at the same place.
VARIANT Integer(VARTYPE type, std::int64_t value) {
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = type;
    V_I8(&variant) = value;
    return variant;
}

VARIANT ErrorVariant(SCODE code) {
    return Integer(VT_ERROR, code);
}

class VariantValueTest : public AutomationTest {};

TEST_F(VariantValueTest, EveryKindOfAValueGoesThereAndBack) {
    const std::pair<Value, VARTYPE> kinds[] = {
        {EmptyValue{}, VT_EMPTY},
        {NullValue{}, VT_NULL},
        {true, VT_BOOL},
        {false, VT_BOOL},
        {std::int16_t{-32768}, VT_I2},
        {std::int32_t{-2147483647}, VT_I4},
        {1.5F, VT_R4},
        {-0.1, VT_R8},
        {std::numeric_limits<double>::denorm_min(), VT_R8},
        {CurrencyValue{-922337203685477LL}, VT_CY},
        {DateValue{45000.25}, VT_DATE},
        {ErrorCodeValue{2007}, VT_ERROR},
        {ErrorCodeValue{static_cast<std::int32_t>(0x80020004)}, VT_ERROR},
        {std::string(), VT_BSTR},
        {std::string("1,5 \xC2\xB5V \xF0\x9D\x84\x9E"), VT_BSTR},
        {std::string("a\0b", 3), VT_BSTR},
    };
    for (const auto& [value, kind] : kinds) {
        const _variant_t variant = ToVariant(value);
        EXPECT_EQ(V_VT(&variant), kind);
        EXPECT_TRUE(ToValue(variant) == value) << "kind " << kind;
    }
    EXPECT_TRUE(std::isnan(std::get<double>(ToValue(ToVariant(std::nan(""))))));
}

TEST_F(VariantValueTest, KindsThatAValueLacksBecomeTheNextWider) {
    DECIMAL tenth{};
    tenth.scale = 1;
    tenth.Lo64 = 1;
    const std::pair<_variant_t, Value> kinds[] = {
        {Integer(VT_I1, 0x80), std::int16_t{-128}},
        {Integer(VT_UI1, 255), std::int16_t{255}},
        {Integer(VT_UI2, 65535), std::int32_t{65535}},
        {Integer(VT_INT, -5), std::int32_t{-5}},
        {Integer(VT_UINT, 4000000000), 4e9},
        {Integer(VT_UI4, 7), std::int32_t{7}},
        {Integer(VT_I8, -2147483648LL), std::int32_t{-2147483647 - 1}},
        {Integer(VT_I8, 9007199254740992), 9007199254740992.0},
        {Integer(VT_UI8, 2147483648LL), 2147483648.0},
        {_variant_t(tenth), 0.1},
        {Integer(VT_BOOL, 1), true},
        {Integer(VT_BSTR, 0), std::string()},
        {ErrorVariant(static_cast<SCODE>(0x800A07D7)), ErrorCodeValue{2007}},
    };
    for (const auto& [variant, value] : kinds) {
        EXPECT_TRUE(ToValue(variant) == value) << "kind " << V_VT(&variant);
    }
    double number = 2.5;
    VARIANT reference;
    V_VT(&reference) = VT_BYREF | VT_R8;
    V_R8REF(&reference) = &number;
    EXPECT_TRUE(ToValue(reference) == Value(2.5));
}

TEST_F(VariantValueTest, WhatNothingHoldsIsAnErrorThatNamesTheKind) {
    EXPECT_EQ(ErrorOf([] { (void)ToValue(Integer(VT_I8, 9007199254740993)); }), "6 Overflow");
    EXPECT_EQ(ErrorOf([] { (void)ToValue(Integer(VT_UI8, -1)); }), "6 Overflow");
    EXPECT_EQ(ErrorOf([] { (void)ToValue(Integer(VT_DISPATCH, 0)); }),
              "13 A value of the automation kind 0x0009 can't be used here.");
    EXPECT_EQ(ErrorOf([] { (void)ToValue(Integer(VT_ARRAY | VT_UI1, 0)); }),
              "13 A value of the automation kind 0x2011 can't be used here.");
}

_variant_t NewArray(VARTYPE kind, std::initializer_list<ULONG> extents) {
    std::vector<SAFEARRAYBOUND> bounds;
    for (const ULONG extent : extents) {
        bounds.push_back({extent, 1});
    }
    _variant_t array;
    V_VT(&array) = static_cast<VARTYPE>(VT_ARRAY | kind);
    V_ARRAY(&array) = SafeArrayCreate(kind, static_cast<UINT>(bounds.size()), bounds.data());
    return array;
}

TEST_F(VariantValueTest, CellsAreCopiedRowByRow) {
    const _variant_t block = NewArray(VT_VARIANT, {2, 3});
    for (LONG row = 1; row <= 2; ++row) {
        for (LONG column = 1; column <= 3; ++column) {
            LONG place[] = {row, column};
            _variant_t value(row * 10.0 + column);
            SafeArrayPutElement(V_ARRAY(&block), place, &value);
        }
    }
    std::vector<Value> values(6);
    CopyCells(block, 2, 3, values);
    EXPECT_EQ(values, (std::vector<Value>{11.0, 12.0, 13.0, 21.0, 22.0, 23.0}));

    const std::string wrong =
        "13 The application reported cells in another form than was asked for.";
    EXPECT_EQ(ErrorOf([&] { CopyCells(block, 3, 2, values); }), wrong);
    EXPECT_EQ(ErrorOf([&] { CopyCells(NewArray(VT_VARIANT, {6}), 6, 1, values); }), wrong);
    EXPECT_EQ(ErrorOf([&] { CopyCells(NewArray(VT_R8, {6, 1}), 6, 1, values); }), wrong);
    EXPECT_EQ(ErrorOf([&] { CopyCells(_variant_t(1.0), 2, 1, values); }), wrong);
}

TEST_F(VariantValueTest, ListsOfTextsMayBeTypedOrNot) {
    const std::vector<std::string> expected{"M7718C", "KRV-1B"};
    for (const VARTYPE kind : {VT_BSTR, VT_VARIANT}) {
        _variant_t list = NewArray(kind, {2});
        for (LONG index = 1; index <= 2; ++index) {
            _variant_t text = ToVariant(expected[static_cast<std::size_t>(index) - 1]);
            SafeArrayPutElement(V_ARRAY(&list), &index,
                                kind == VT_BSTR ? static_cast<void*>(V_BSTR(&text)) : &text);
        }
        EXPECT_EQ(ToTexts(list), expected);
        VARIANT reference;
        V_VT(&reference) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&reference) = &list;
        EXPECT_EQ(ToTexts(reference), expected);
    }
    EXPECT_TRUE(ToTexts(_variant_t()).empty());
    EXPECT_TRUE(ToTexts(NewArray(VT_BSTR, {0})).empty());
    EXPECT_EQ(ErrorOf([] { (void)ToTexts(NewArray(VT_I2, {2})); }),
              "13 A value of the automation kind 0x2002 can't be used here.");
    EXPECT_EQ(ErrorOf([] { (void)ToTexts(_variant_t(1.0)); }),
              "13 A value of the automation kind 0x0005 can't be used here.");
}

ArrayValue ListOf(std::vector<ArrayElement> elements) {
    const auto count = static_cast<std::uint32_t>(elements.size());
    return {ElementKind::Any, {{count, 0}}, std::move(elements)};
}

TEST_F(VariantValueTest, ArraysKeepTheirTypeDimensionsAndBounds) {
    const std::pair<Value, VARTYPE> arrays[] = {
        {ByteArray{{std::byte{1}, std::byte{255}}, 1}, VT_UI1},
        {ByteArray{}, VT_UI1},
        {ArrayValue{
             ElementKind::Integer, {{2, 1}, {1, -5}}, {{std::int16_t{1}}, {std::int16_t{-2}}}},
         VT_I2},
        {ArrayValue{ElementKind::Boolean, {{2, 0}}, {{true}, {false}}}, VT_BOOL},
        {ArrayValue{ElementKind::Currency, {{1, 0}}, {{CurrencyValue{-1}}}}, VT_CY},
        {ArrayValue{ElementKind::ErrorCode, {{1, 0}}, {{ErrorCodeValue{2007}}}}, VT_ERROR},
        {ArrayValue{ElementKind::Double, {{0, 0}}, {}}, VT_R8},
        {ArrayValue{ElementKind::Text, {{2, 0}}, {{std::string("a")}, {std::string("\xC2\xB5")}}},
         VT_BSTR},
        {ListOf({{EmptyValue{}}, {ByteArray{{std::byte{7}}, 0}}, {ListOf({{1.5}})}}), VT_VARIANT},
    };
    for (const auto& [value, kind] : arrays) {
        const _variant_t variant = ToVariant(value);
        EXPECT_EQ(V_VT(&variant), VT_ARRAY | kind);
        EXPECT_TRUE(ToValue(variant) == value) << "kind " << kind;
        VARIANT reference;
        V_VT(&reference) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&reference) = const_cast<_variant_t*>(&variant);
        EXPECT_TRUE(ToValue(reference) == value) << "kind " << kind;
    }
}

TEST_F(VariantValueTest, ArraysThatNothingHoldsAreRefused) {
    EXPECT_EQ(ErrorOf([] { (void)ToValue(NewArray(VT_I8, {1})); }),
              "13 A value of the automation kind 0x2014 can't be used here.");
    EXPECT_EQ(ErrorOf([] {
                  (void)ToValue(NewArray(VT_UI1, {2, 2}));
              }),
              "13 A value of the automation kind 0x2011 can't be used here.");
    const std::string tooLarge = "13 The array is too large or too deep.";
    EXPECT_EQ(ErrorOf([] { (void)ToValue(NewArray(VT_I2, {1025, 1024})); }), tooLarge);
    // An array that leads back to itself.
    _variant_t cycle = NewArray(VT_VARIANT, {2});
    const windows::ArrayAccess access(V_ARRAY(&cycle));
    for (int index = 0; index < 2; ++index) {
        VARIANT& element = access.Elements<VARIANT>()[index];
        V_VT(&element) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&element) = &cycle;
    }
    EXPECT_EQ(ErrorOf([&] { (void)ToValue(cycle); }), tooLarge);
    EXPECT_EQ(ErrorOf([&] { (void)windows::KeepVariant(cycle); }), tooLarge);
    EXPECT_EQ(ErrorOf([] {
                  (void)ToVariant(ArrayValue{ElementKind::Any, {{2, 0}}, {{1.0}}});
              }),
              "13 Type mismatch");
    EXPECT_EQ(ErrorOf([] {
                  (void)ToVariant(ArrayValue{ElementKind::Long, {{1, 0}}, {{1.0}}});
              }),
              "13 Type mismatch");
}

_variant_t Bytes(std::string_view bytes) {
    _variant_t text;
    V_VT(&text) = VT_BSTR;
    V_BSTR(&text) = SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size()));
    return text;
}

TEST_F(VariantValueTest, KeptVariantsComeBackExactlyAsTheyWere) {
    DECIMAL tenth{};
    tenth.scale = 1;
    tenth.Lo64 = 1;
    _variant_t mixed = NewArray(VT_VARIANT, {2, 2});
    LONG corner[] = {2, 2};
    _variant_t inner = NewArray(VT_I8, {3, 0});
    SafeArrayPutElement(V_ARRAY(&mixed), corner, &inner);
    corner[0] = 1;
    _variant_t odd = Bytes("odd");
    SafeArrayPutElement(V_ARRAY(&mixed), corner, &odd);
    _variant_t texts = NewArray(VT_BSTR, {2});
    SafeArrayPutElement(V_ARRAY(&texts), corner, V_BSTR(&odd));
    _variant_t large = NewArray(VT_I2, {1500, 1500});
    const _variant_t marked = ToVariant(windows::KeepVariant(_variant_t(tenth)));
    const _variant_t kept[] = {_variant_t(),
                               _variant_t(1.5),
                               _variant_t(L"text"),
                               Bytes(std::string_view("\x00\xD8", 2)),
                               odd,
                               Integer(VT_BSTR, 0),
                               Integer(VT_UI1, 255),
                               Integer(VT_I8, -9007199254740993),
                               Integer(VT_UI8, -1),
                               Integer(VT_BOOL, 1),
                               ErrorVariant(5),
                               _variant_t(tenth),
                               NewArray(VT_UI1, {2, 2}),
                               NewArray(VT_UI1, {3}),
                               NewArray(VT_DECIMAL, {2}),
                               mixed,
                               texts,
                               large,
                               marked};
    for (const _variant_t& variant : kept) {
        const Value value = windows::KeepVariant(variant);
        const _variant_t back = windows::GiveBackVariant(value);
        ASSERT_EQ(V_VT(&back), V_VT(&variant));
        EXPECT_TRUE(windows::KeepVariant(back) == value) << "kind " << V_VT(&variant);
        if ((V_VT(&variant) & VT_ARRAY) == 0) {
            EXPECT_TRUE(back == variant) << "kind " << V_VT(&variant);
        } else {
            EXPECT_EQ(std::memcmp(V_ARRAY(&back)->rgsabound, V_ARRAY(&variant)->rgsabound,
                                  V_ARRAY(&variant)->cDims * sizeof(SAFEARRAYBOUND)),
                      0);
        }
        VARIANT reference;
        V_VT(&reference) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&reference) = const_cast<_variant_t*>(&variant);
        EXPECT_TRUE(windows::GiveBackVariant(windows::KeepVariant(reference)).vt == variant.vt);
    }
    EXPECT_EQ(ErrorOf([] { (void)windows::KeepVariant(Integer(VT_DISPATCH, 0)); }),
              "13 A value of the automation kind 0x0009 can't be used here.");
    EXPECT_EQ(ErrorOf([] {
                  (void)windows::KeepVariant(NewArray(VT_I2, {8192, 4097}));
              }),
              "380 Can't be kept: more than 64 megabytes.");
}

TEST_F(VariantValueTest, DamagedKeptVariantsAreRefused) {
    const auto intact = std::get<ByteArray>(windows::KeepVariant(NewArray(VT_VARIANT, {4, 4})));
    const std::string damaged = "321 The kept value is damaged.";
    for (std::size_t length = 8; length <= intact.bytes.size() + 1; ++length) {
        ByteArray other = intact;
        other.bytes.resize(length);
        EXPECT_EQ(ErrorOf([&] { (void)windows::GiveBackVariant(other); }),
                  length == intact.bytes.size() ? "none" : damaged);
    }
    for (std::size_t at = 8; at < intact.bytes.size(); ++at) {
        ByteArray altered = intact;
        altered.bytes[at] ^= std::byte{0xFF};
        (void)ErrorOf([&] { (void)windows::GiveBackVariant(altered); });
    }
    ByteArray deep = std::get<ByteArray>(windows::KeepVariant(NewArray(VT_VARIANT, {1})));
    const std::vector<std::byte> level(deep.bytes.begin() + 8, deep.bytes.end() - 2);
    for (std::size_t levels = 1; levels <= ValueLimit::ArrayLevels; ++levels) {
        deep.bytes.insert(deep.bytes.begin() + 8, level.begin(), level.end());
    }
    EXPECT_EQ(ErrorOf([&] { (void)windows::GiveBackVariant(deep); }), damaged);
    ByteArray objects = std::get<ByteArray>(windows::KeepVariant(NewArray(VT_BSTR, {2})));
    objects.bytes[8] = std::byte{VT_DISPATCH};
    EXPECT_EQ(ErrorOf([&] { (void)windows::GiveBackVariant(objects); }), damaged);
}

}  // namespace
}  // namespace krv::tests
