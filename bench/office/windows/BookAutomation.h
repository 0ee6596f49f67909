// BookAutomation: what the automation objects of krvbook share. It leads them to the application
// while that runs; callers may hold objects longer, whose use then throws. The user-interface
// thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <map>
#include <memory>

#include "bench/office/BookApplication.h"

namespace krv::bench {

// What the objects ask of the program's window.
class ProgramWindow {
 public:
    virtual ~ProgramWindow() = default;
    [[nodiscard]] virtual HWND Handle() const = 0;
    [[nodiscard]] virtual bool IsShown() const = 0;
    virtual void Show(bool isShown) = 0;
    // While a cell is edited the application refuses all calls.
    [[nodiscard]] virtual bool IsEditing() const = 0;
    virtual void Quit() = 0;
};

class BookAutomation : public std::enable_shared_from_this<BookAutomation> {
 public:
    // Both outlive the call of End.
    BookAutomation(BookApplication& application, ProgramWindow& window)
        : m_application(&application), m_window(&window) {}

    // Lets go of objects whose books are closed. To be called whenever the open books change.
    void ForgetClosedBooks();
    // Lets go of the application and of all objects kept here.
    void End() noexcept;

    // Each throws Error 424 after the end.
    [[nodiscard]] BookApplication& Application() const;
    [[nodiscard]] ProgramWindow& Window() const;
    [[nodiscard]] bool IsBusy() const { return m_window != nullptr && m_window->IsEditing(); }

    void SetApplicationObject(IDispatch* object) { m_applicationObject = object; }
    // Null after the end.
    [[nodiscard]] IDispatch* ApplicationObject() const { return m_applicationObject.Get(); }
    // One object for each workbook, so that callers can compare them; null for null.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ObjectOf(const std::shared_ptr<Workbook>& book);
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ObjectOf(const Workbook& book);

 private:
    [[nodiscard]] std::shared_ptr<Workbook> OpenBook(const Workbook& book) const;

    BookApplication* m_application;
    ProgramWindow* m_window;
    Microsoft::WRL::ComPtr<IDispatch> m_applicationObject;
    std::map<const Workbook*, Microsoft::WRL::ComPtr<IDispatch>> m_books;
};

}  // namespace krv::bench
