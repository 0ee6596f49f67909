// ExcelModel: the shape of Excel's object model, with one sheet of cells that a function fills.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "tests/windows/support/ScriptedObject.h"

namespace krv::tests {

inline constexpr IID ExcelApplicationId{
    0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID WorkbookId{
    0x000208DA, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID WordDocumentId{
    0x0002096B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID ExcelEventsId{
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

class ExcelModel {
 public:
    // Rows and columns from 1.
    struct Area {
        long Row, Column, Rows, Columns;
    };

    // What a cell holds.
    std::function<_variant_t(long row, long column)> Cell = [](long, long) { return _variant_t(); };
    // What texts stand for; any other is refused as Excel does.
    std::map<std::wstring, std::vector<Area>> Names;
    // Sizes of the blocks of values that were read.
    std::vector<long> Reads;
    ScriptedPointer Application = NewScripted();

    ExcelModel() {
        Application->Answer(ExcelApplicationId);
        Application->Events = ExcelEventsId;
        Application->Members[L"Range"] = [this](const ScriptedCall& call) {
            const auto named = Names.find(V_BSTR(&call.Arguments.at(0)));
            if (named == Names.end()) {
                throw HostException{static_cast<HRESULT>(0x800A03EC), L"That name is not valid.",
                                    L"Microsoft Excel"};
            }
            return ObjectVariant(MakeRange(named->second));
        };
    }

    ScriptedPointer MakeRange(const std::vector<Area>& areas) {
        const Area area = areas.at(0);
        ScriptedPointer range =
            NewScripted({{L"Count", area.Rows * area.Columns},
                         {L"Address", AddressOf(area).c_str()},
                         {L"Areas", Collection(static_cast<long>(areas.size()))},
                         {L"Rows", Collection(area.Rows)},
                         {L"Columns", Collection(area.Columns)}});
        range->Members[L"Cells"] = [this, area](const ScriptedCall& call) {
            const long row = V_I4(&call.Arguments.at(0));
            const long column = V_I4(&call.Arguments.at(1));
            return ObjectVariant(MakeRange({{area.Row + row - 1, area.Column + column - 1, 1, 1}}));
        };
        range->Members[L"Resize"] = [this, area](const ScriptedCall& call) {
            return ObjectVariant(MakeRange({{area.Row, area.Column, V_I4(&call.Arguments.at(0)),
                                             V_I4(&call.Arguments.at(1))}}));
        };
        range->Members[L"Value"] = [this, area](const ScriptedCall&) {
            return ValuesOf(area, [](_variant_t&) {});
        };
        range->Members[L"Value2"] = [this, area](const ScriptedCall&) {
            return ValuesOf(area, [](_variant_t& value) {
                if (V_VT(&value) == VT_DATE || V_VT(&value) == VT_CY) {
                    value.ChangeType(VT_R8);
                }
            });
        };
        return range;
    }

    static _variant_t Collection(long count) {
        return ObjectVariant(NewScripted({{L"Count", count}}));
    }
    // A collection whose items are found by number from 1, or by a text of theirs.
    static _variant_t Collection(std::vector<ScriptedPointer> items, const wchar_t* key) {
        ScriptedPointer collection = NewScripted({{L"Count", static_cast<long>(items.size())}});
        collection->Members[L"Item"] = [items, key](const ScriptedCall& call) {
            const _variant_t index = call.Arguments.at(0);
            for (std::size_t i = 0; i < items.size(); ++i) {
                if (V_VT(&index) == VT_BSTR ? items[i]->Properties[key] == index
                                            : static_cast<long>(i) + 1 == V_I4(&index)) {
                    return ObjectVariant(items[i]);
                }
            }
            throw HostException{E_INVALIDARG, L"There is no such item.", L"Microsoft Office"};
        };
        return ObjectVariant(collection);
    }

 private:
    template <class Change>
    _variant_t ValuesOf(const Area& area, const Change& change) {
        Reads.push_back(area.Rows * area.Columns);
        const auto cell = [&](long row, long column) {
            _variant_t value = Cell(area.Row + row, area.Column + column);
            change(value);
            return value;
        };
        if (area.Rows * area.Columns == 1) {
            return cell(0, 0);
        }
        SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(area.Rows), 1},
                                   {static_cast<ULONG>(area.Columns), 1}};
        _variant_t block;
        V_VT(&block) = VT_ARRAY | VT_VARIANT;
        V_ARRAY(&block) = SafeArrayCreate(VT_VARIANT, 2, bounds);
        for (long row = 0; row < area.Rows; ++row) {
            for (long column = 0; column < area.Columns; ++column) {
                LONG indices[] = {row + 1, column + 1};
                _variant_t value = cell(row, column);
                SafeArrayPutElement(V_ARRAY(&block), indices, &value);
            }
        }
        return block;
    }

    static std::wstring CellName(long row, long column) {
        return L"$" + std::wstring(1, static_cast<wchar_t>(L'A' + column - 1)) + L"$" +
               std::to_wstring(row);
    }
    static std::wstring AddressOf(const Area& area) {
        const std::wstring first = CellName(area.Row, area.Column);
        const std::wstring last =
            CellName(area.Row + area.Rows - 1, area.Column + area.Columns - 1);
        return first == last ? first : first + L":" + last;
    }
};

}  // namespace krv::tests
