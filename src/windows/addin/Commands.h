// The seven commands of the toolbar, in its order.
#pragma once

#include <array>
#include <cstddef>

namespace krv::windows {

struct Command {
    // The key by which the toolbar's rules know its button; also the caption on the command bar.
    const char* caption;
    // The member of the control that carries it out.
    const wchar_t* member;
    // On the ribbon: its name there, the group that it begins, or null, and its key.
    const char* ribbonId;
    const char* group;
    const char* keyTip;
};

inline constexpr std::array<Command, 7> Commands{
    {{"Corvane TQL/KRV", L"DoAbout", "KRVAbout", "Tallyport", "A"},
     {"Connect", L"DoConnect", "KRVConnect", "Instrument", "C"},
     {"Connected", L"DoConnect", "KRVConnected", nullptr, "D"},
     {"Settings", L"DoSetup", "KRVSettings", nullptr, "S"},
     {"PutData", L"DoDataTransfer", "KRVPutData", "Data", "P"},
     {"GetImage", L"DoSaveScreenImage", "KRVGetImage", nullptr, "G"},
     {"Help", L"DoHelp", "KRVHelp", "Help", "H"}}};

}  // namespace krv::windows
