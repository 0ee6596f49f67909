// ApplicationMembers: the automation members that both applications have. They are late-bound only:
// an application answers for its kind's published interface with IDispatch, so that hosts of
// add-ins can be told apart, and offers no vtable beyond that.
#pragma once

#include <memory>
#include <string>

#include "bench/shared/windows/AddInObjects.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/BarObjects.h"
#include "bench/shared/windows/WindowObjects.h"

namespace krv::bench {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Own has PublishedId, the interface that it answers for, and DocumentsName, what the collection of
// its documents is called.
template <class Own, class... Interfaces>
class ApplicationMembers : public AutomationObject<Own, Interfaces...> {
    using Base = AutomationObject<Own, Interfaces...>;

 public:
    using Base::Base;

 protected:
    static constexpr std::array<Member<Own>, 9> Rows() {
        return {{{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
                 {L"Application", &Own::GetApplication},
                 {L"CommandBars", &Own::GetCommandBars},
                 {L"AddIns", &Own::GetAddIns},
                 {L"COMAddIns", &Own::GetComAddIns},
                 {L"ActiveWindow", &Own::GetActiveWindow},
                 {Own::DocumentsName, &Own::GetDocuments},
                 {L"DisplayStatusBar", &Own::DisplayStatusBar, MemberKind::ReadWrite},
                 {L"Quit", &Own::Quit}}};
    }

    void* FindInterface(REFIID id) noexcept override {
        return id == Own::PublishedId ? static_cast<IDispatch*>(this) : Base::FindInterface(id);
    }

    _variant_t GetName(const MemberCall&) { return AsVariant(std::string(this->Traits().program)); }
    _variant_t GetCommandBars(const MemberCall&) { return NewCommandBars(this->Automation()); }
    _variant_t GetAddIns(const MemberCall&) { return NewAddIns(this->Automation()); }
    _variant_t GetComAddIns(const MemberCall&) { return NewComAddIns(this->Automation()); }
    _variant_t GetActiveWindow(const MemberCall&) { return NewActiveWindow(this->Automation()); }
    _variant_t GetDocuments(const MemberCall&) { return NewDocuments(this->Automation()); }
    _variant_t DisplayStatusBar(const MemberCall& call) {
        if (call.IsPut()) {
            this->Application().DisplayStatusBar(FlagIn(call.NewValue()));
        }
        return AsVariant(this->Application().IsStatusBarDisplayed());
    }
    _variant_t Cursor(const MemberCall& call) {
        if (call.IsPut()) {
            this->Application().SetCursor(NumberIn(call.NewValue()));
        }
        return AsVariant(this->Application().Cursor());
    }
    _variant_t Quit(const MemberCall&) {
        this->Automation()->Window().Quit();
        return {};
    }
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
