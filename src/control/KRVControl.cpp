#include "control/KRVControl.h"

#include <type_traits>
#include <variant>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Numbers.h"
#include "common/ScopeExit.h"
#include "common/Text.h"
#include "hosts/HelpTopics.h"
#include "hosts/OfficeProcedures.h"
#include "hosts/ToolbarButtons.h"

namespace krv::control {
namespace {

// Whether a value that automation hands over equals 1, by the classic comparison. Throws Error 13
// for what can't be compared with a number.
bool IsOne(const Value& flag, NumberFormat format) {
    return std::visit(
        [format](const auto& value) -> bool {
            using Kind = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                return false;  // true counts as -1
            } else if constexpr (std::is_arithmetic_v<Kind>) {
                return value == Kind{1};
            } else if constexpr (std::is_same_v<Kind, CurrencyValue>) {
                return value.tenThousandths == 10000;
            } else if constexpr (std::is_same_v<Kind, DateValue>) {
                return value.days == 1.0;
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return TextToDouble(value, format) == 1.0;
            } else if constexpr (std::is_same_v<Kind, ErrorCodeValue> ||
                                 std::is_same_v<Kind, ByteArray> ||
                                 std::is_same_v<Kind, ArrayValue>) {
                throw Error(ErrorNumber::TypeMismatch);
            } else {
                return false;
            }
        },
        flag);
}

}  // namespace

KRVControl::KRVControl(const ControlServices& services)
    : m_services(services), m_toolbar(std::make_shared<Toolbar>()) {
    for (const hosts::InitialButton& button : hosts::InitialButtons) {
        m_toolbar->AddButton(button.caption);
    }
    m_toolbar->OnButtonClick = [this](const std::string& key) { ToolbarClicked(key); };
}

KRVControl::~KRVControl() {
    Terminate();
    // An adapter may keep the buttons alive a little longer.
    m_toolbar->OnButtonClick = nullptr;
}

void KRVControl::Terminate() {
    if (m_dialogInputs > 0) {
        m_isTerminating = true;
        m_dataTransferForm->Callback1().RequestCancel();
    } else if (m_dataTransferForm) {
        EndDialog();
    }
    if (m_instrSetupInfo) {
        TakeSetupInterfaceBack(*m_instrSetupInfo);
    }
}

void KRVControl::EndDialog() {
    m_isTerminating = false;
    m_dataTransferForm->AppConnection = nullptr;
    m_dataTransferForm->instrServer = nullptr;
    m_dataTransferForm->Unload();
}

// Keeps the control while the dialog handles a user's input, which may be a download, and ends the
// dialog afterwards when the control was to end meanwhile.
std::shared_ptr<void> KRVControl::KeepForDialog() {
    ++m_dialogInputs;
    return {nullptr, [this, alive = m_services.surface.KeepAlive()](std::nullptr_t) {
                if (--m_dialogInputs > 0) {
                    return;
                }
                if (m_isTerminating) {
                    EndDialog();
                } else {
                    FollowConnection();
                }
            }};
}

void KRVControl::ToolbarClicked(const std::string& key) {
    if (key == hosts::ButtonKey::About) {
        DoAbout();
    } else if (key == hosts::ButtonKey::Connect || key == hosts::ButtonKey::Connected) {
        DoConnect();
    } else if (key == hosts::ButtonKey::Settings) {
        DoSetup();
    } else if (key == hosts::ButtonKey::PutData) {
        DoDataTransfer(EmptyValue{}, std::int16_t{0});
    } else if (key == hosts::ButtonKey::GetImage) {
        // The user has read of a failure in a message box.
        TrapErrors([this] { DoSaveScreenImage(); });
    } else if (key == hosts::ButtonKey::Help) {
        DoHelp();
    } else {
        ShowMessage("Unknown button pressed!", ports::MessageIcon::None);
    }
}

void KRVControl::DoAbout() {
    Command([&] {
        m_services.about.ShowAbout(
            {ports::ComponentProgIds.begin(), ports::ComponentProgIds.end()});
    });
}

std::shared_ptr<ports::HostApplication> KRVControl::ConnectedApplication() {
    return m_appConnection ? m_appConnection->hostApp() : nullptr;
}

void KRVControl::SetConnectedApplication(const std::shared_ptr<ports::HostApplication>& app) {
    if (m_appConnection) {
        InitAdapter(*m_appConnection, app);
        return;
    }
    ChooseAdapter(app);
    if (m_appConnection) {
        PropertiesChanged();
    }
}

void KRVControl::ChooseAdapter(const std::shared_ptr<ports::HostApplication>& app) {
    // Each adapter's Init decides whether the application is its kind of host.
    for (const hosts::SavedDataCvalues kind : {hosts::ExcelSaved, hosts::WordSaved}) {
        m_appConnection = m_services.adapters.CreateAdapter(kind);
        if (InitAdapter(*m_appConnection, app)) {
            return;
        }
    }
    m_appConnection = nullptr;
}

bool KRVControl::InitAdapter(hosts::AppConnection& adapter,
                             const std::shared_ptr<ports::HostApplication>& app) {
    bool isAttached = false;
    TrapErrors([&] {
        isAttached = adapter.Init(app, Server(), *this, m_services.surface.ContextHandle());
    });
    return isAttached;
}

void KRVControl::UpdateConnectedStatus() {
    Command([&] {
        if (m_appConnection) {
            m_appConnection->UpdateConnectedIconAndTooltip(Settings()->HostName());
        }
    });
}

void KRVControl::DoSaveScreenImage() {
    const auto failure = FailureOf([this] { TransferScreenImage(); });
    const ScopeExit follow([this] { FollowConnection(); });
    if (!failure) {
        return;
    }
    ShowMessage("Failed to transfer image to application." + std::string(CrLf) +
                    "Error Description: " + std::string(CrLf) + failure->Description(),
                ports::MessageIcon::Critical);
    ReturnInstrumentToLocal();
    if (!m_appConnection) {
        throw Error(*failure);
    }
}

void KRVControl::TransferScreenImage() {
    const auto adapter = m_appConnection;
    if (!adapter) {
        throw Error(ErrorNumber::Unspecified, "DataConnection Object Not Set",
                    "KRVControl::IToolbarSupport_DoSaveScreenImage");
    }
    adapter->DoPictureTransfer();
    hosts::ReturnToLocal(Server()->Instrument()->IO());
}

void KRVControl::DoDataTransfer(const Value& /*data*/, const Value& flag) {
    Command([&] {
        waveform::frmDataTransfer& form = DataTransferForm();
        form.DownloadRangeData = IsOne(flag, m_services.desktop.numberFormat);
        form.AppConnection = m_appConnection;
        form.instrServer = Server();
        form.applicationHWND = ApplicationWindow();
        form.ShowModeless();
    });
}

void KRVControl::DoHelp() {
    Command([&] {
        if (m_appConnection) {
            m_appConnection->DoHelp(TopLevelWindow(), hosts::HelpContext::None);
        }
    });
}

void KRVControl::Command(const std::function<void()>& work) {
    const auto failure = FailureOf(work);
    FollowConnection();
    // Without the component nothing will ever work, so the user reads which one to install.
    if (failure && failure->Number() == ErrorNumber::CannotCreateObject) {
        ShowMessage(failure->Description(), ports::MessageIcon::Critical);
    }
}

void KRVControl::ShowMessage(const std::string& text, ports::MessageIcon icon) {
    m_services.desktop.messageBoxes.Show({text, {}, icon, ports::MessageButtons::Ok});
}

ports::WindowHandle KRVControl::ApplicationWindow() {
    return m_appConnection ? TopLevelWindow() : ports::WindowHandle{0};
}

ports::WindowHandle KRVControl::TopLevelWindow() {
    return m_services.suite.CreateUtilities()->TopLevelWindow(m_services.surface);
}

waveform::frmDataTransfer& KRVControl::DataTransferForm() {
    if (!m_dataTransferForm) {
        m_dataTransferForm = std::make_unique<waveform::frmDataTransfer>(
            m_services.desktop, m_services.runningApplications,
            m_services.newPreview ? m_services.newPreview() : nullptr);
        m_dataTransferForm->KeepOwner = [this] { return KeepForDialog(); };
    }
    return *m_dataTransferForm;
}

const std::shared_ptr<ports::KRVServer>& KRVControl::Server() {
    if (!m_server) {
        m_server = m_services.suite.CreateServer();
    }
    return m_server;
}

}  // namespace krv::control
