#include "bench/shared/windows/ProgramMenu.h"

namespace krv::bench {

ProgramMenu::ProgramMenu(const std::vector<MenuList>& lists) : m_bar(CreateMenu()) {
    std::vector<ACCEL> keys;
    for (const MenuList& list : lists) {
        const HMENU menu = CreatePopupMenu();
        for (const MenuItem& item : list.items) {
            AppendMenuW(menu, item.text != nullptr ? MF_STRING : MF_SEPARATOR, item.id, item.text);
            if (item.key != 0) {
                keys.push_back(
                    {FCONTROL | FVIRTKEY, static_cast<WORD>(item.key), static_cast<WORD>(item.id)});
            }
        }
        AppendMenuW(m_bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), list.title);
    }
    m_keys = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

}  // namespace krv::bench
