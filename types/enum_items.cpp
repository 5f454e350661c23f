#include "types/enum_items.h"

#include "input/cursor.h"
#include "report/report.h"
#include "store/tables.h"
#include "types/field_list.h"

namespace scan695 {

namespace {

// A size mark shows by the absence of a name: any byte that is none, and then the size.
bool NextItemName(EnumItems& items, const FieldList& list, char* name) {
    while (ReadName(name, SYMBOL_NAME_SIZE) == 0) {
        if (list.Count() != 0) return false;
        items.size = ReadByte();
        Trace("ScanEnumItems(), size of enum =%u\n", items.size);
    }
    return true;
}

}  // namespace

EnumItems ScanEnumItems() {
    Trace("ScanEnumItems()...\n");
    EnumItems items;
    FieldList list;
    char name[SYMBOL_NAME_SIZE] = "";
    uint32_t value = 0;
    while (NextItemName(items, list, name)) {
        Trace("Item%u: name=%s, ", list.Count(), name);
        ReadNumber(value);
        Trace("value=%u\n", value);
        FIELDINFO item = {};
        item.value = value;
        item.name_offs = StoreName(CutName(name));
        list.Add(item);
    }
    items.count = list.Count();
    items.field_offs = list.Store();
    Trace("End ScanEnumItems(), nof_elem=%u\n", items.count);
    return items;
}

}  // namespace scan695
