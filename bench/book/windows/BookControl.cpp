#include "bench/book/windows/BookControl.h"

#include <optional>
#include <span>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"

namespace krv::bench {
namespace {

std::string TextOf(const MemoryPropertyBag& bag) {
    const auto contents = bag.Contents();
    return {reinterpret_cast<const char*>(contents.data()), contents.size()};
}

}  // namespace

BookControl::BookControl(BookApplication& application, BookAutomation& automation,
                         GeneratorBand& band)
    : m_application(application), m_automation(automation), m_band(band) {
    m_application.AddObserver(*this);
}

BookControl::~BookControl() {
    m_application.RemoveObserver(*this);
}

void BookControl::Start() {
    m_isStarted = true;
    HostFor(m_application.ActiveBook());
}

void BookControl::OnOpened(Workbook& opened) {
    if (!opened.Notice().empty()) {
        m_application.SetStatus(opened.Notice());
    }
    if (!m_isStarted || !opened.ControlProperties()) {
        return;
    }
    Keep();
    HostFor(m_application.ActiveBook());
}

void BookControl::HostFor(const std::shared_ptr<Workbook>& book) {
    m_owner = book;
    IDispatch* const application = m_automation.ApplicationObject();
    const auto document = m_automation.ObjectOf(book);
    if (!book || !book->ControlProperties()) {
        m_band.HostControl(application, document.Get());
        return;
    }
    MemoryPropertyBag saved;
    try {
        saved.SetContents(std::as_bytes(std::span(*book->ControlProperties())));
    } catch (const Error& error) {
        // The section was intact, so that another program wrote this.
        m_application.SetStatus("The toolbar's settings in \"" + book->Name() +
                                "\" can't be used.  " + error.Description());
        m_band.HostControl(application, document.Get());
        return;
    }
    m_band.HostControl(application, document.Get(), &saved);
}

void BookControl::OnSaving(Workbook& book) {
    if (&book == m_owner.lock().get()) {
        Keep();
    }
}

void BookControl::Keep() {
    const auto owner = m_owner.lock();
    if (owner && m_band.Control() != nullptr) {
        owner->SetControlProperties(TextOf(m_band.Control()->Save()));
    }
}

bool BookControl::HasUnsavedControl(const Workbook& book) const {
    return &book == m_owner.lock().get() && book.KeepsControl() && m_band.Control() != nullptr &&
           m_band.Control()->IsDirty();
}

}  // namespace krv::bench
