// BookControl: which workbook the hosted control belongs to. Opening a book that keeps a control's
// properties hosts the control anew from them, and saving the book puts the control's into it. The
// user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>

#include "bench/book/BookApplication.h"
#include "bench/book/windows/BookAutomation.h"
#include "bench/shared/windows/GeneratorBand.h"

namespace krv::bench {

class BookControl final : private BookObserver {
 public:
    // All outlive this. Observes the application from the start.
    BookControl(BookApplication& application, BookAutomation& automation, GeneratorBand& band);
    BookControl(const BookControl&) = delete;
    BookControl& operator=(const BookControl&) = delete;
    ~BookControl() override;

    // Hosts the control for the active book, from what that keeps or as a new one.
    void Start();
    // The control of this book has changed since the book was opened or saved.
    [[nodiscard]] bool HasUnsavedControl(const Workbook& book) const;

 private:
    void OnWorkbookActivate(Workbook&) override {}
    void OnWorkbookDeactivate(Workbook&) override {}
    void OnChanged(BookChange) override {}
    void OnOpened(Workbook& opened) override;
    void OnSaving(Workbook& book) override;

    void HostFor(const std::shared_ptr<Workbook>& book);
    // The control's present properties into the book that it belongs to.
    void Keep();

    BookApplication& m_application;
    BookAutomation& m_automation;
    GeneratorBand& m_band;
    // Null until the control is started.
    std::weak_ptr<Workbook> m_owner;
    bool m_isStarted = false;
};

}  // namespace krv::bench
