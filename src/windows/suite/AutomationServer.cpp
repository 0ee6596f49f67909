#include "windows/suite/AutomationServer.h"

#include "common/Error.h"
#include "windows/automation/KeptVariant.h"
#include "windows/automation/VariantValue.h"
#include "windows/suite/AutomationSession.h"
#include "windows/suite/LentCodes.h"

namespace krv::windows {
namespace {

class AutomationInstrument final : public ports::ConnectedInstrument, public AutomationPeer {
 public:
    explicit AutomationInstrument(LateBound instrument) : m_instrument(std::move(instrument)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_instrument.Object(); }

    std::string Model() override { return m_instrument.GetText(L"Model"); }
    std::string FirmwareRevision() override { return m_instrument.GetText(L"FirmwareRevision"); }
    std::string SerialNumber() override { return m_instrument.GetText(L"SerialNumber"); }
    std::shared_ptr<ports::IoSession> IO() override {
        return SessionOf(m_instrument.GetObject(L"IO"));
    }
    bool FileExists(const std::string& name) override {
        return BoolOf(m_instrument.Call(L"FileExists", {ToVariant(name)}));
    }
    ports::InstrumentError ReadError() override;
    Value CaptureState() override { return KeepVariant(m_instrument.Call(L"CaptureState")); }
    void RestoreState(const Value& state) override {
        m_instrument.Call(L"RestoreState", {GiveBackVariant(state)});
    }

 private:
    LateBound m_instrument;
};

ports::InstrumentError AutomationInstrument::ReadError() {
    _variant_t message;
    VARIANT reference;
    VariantInit(&reference);
    V_VT(&reference) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&reference) = &message;
    std::vector<VARIANT> arguments{reference};
    const _variant_t number = m_instrument.CallByReference(L"ReadError", arguments);
    return {LongOf(number), TextOf(message)};
}

class AutomationArb final : public ports::ArbWaveform {
 public:
    explicit AutomationArb(LateBound arb) : m_arb(std::move(arb)) {}

    bool HasDualArbOption() override { return m_arb.GetBool(L"HasDualArbOption"); }
    bool ArbFileSelected() override { return m_arb.GetBool(L"ArbFileSelected"); }
    std::string SelectedArbFile() override { return m_arb.GetText(L"SelectedArbFile"); }
    void DownloadIQ(const std::string& name, std::span<const std::int16_t> iCodes,
                    std::span<const std::int16_t> qCodes, std::int32_t flags) override {
        LentCodes i(iCodes);
        LentCodes q(qCodes);
        Download(L"DownloadIQ", name, {i.Argument(), q.Argument()}, flags);
    }
    void DownloadInterleaved(const std::string& name, std::span<const std::int16_t> iqCodes,
                             std::int32_t flags) override {
        LentCodes iq(iqCodes);
        Download(L"DownloadInterleaved", name, {iq.Argument()}, flags);
    }
    void DownloadMarkers(const std::string& name, std::span<const std::int16_t> markers,
                         std::int32_t flags) override {
        LentCodes codes(markers);
        Download(L"DownloadMarkers", name, {codes.Argument()}, flags);
    }

 private:
    void Download(const wchar_t* method, const std::string& name,
                  std::initializer_list<VARIANT> codes, std::int32_t flags) const {
        const _variant_t nameArgument = ToVariant(name);
        std::vector<VARIANT> arguments{nameArgument};
        arguments.insert(arguments.end(), codes);
        const _variant_t flagsArgument = ToVariant(flags);
        arguments.push_back(flagsArgument);
        m_arb.CallByReference(method, arguments);
    }

    LateBound m_arb;
};

class AutomationOptions final : public ports::InstrumentOptions {
 public:
    explicit AutomationOptions(LateBound options) : m_options(std::move(options)) {}
    bool ArbInstalled() override { return m_options.GetBool(L"ArbInstalled"); }

 private:
    LateBound m_options;
};

}  // namespace

LateBound AutomationServer::Child(const wchar_t* name) const {
    LateBound child = m_server.GetObject(name);
    if (!child) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return child;
}

std::shared_ptr<ports::ConnectedInstrument> AutomationServer::Instrument() {
    return std::make_shared<AutomationInstrument>(Child(L"Instrument"));
}

std::shared_ptr<ports::ArbWaveform> AutomationServer::Arb() {
    return std::make_shared<AutomationArb>(Child(L"Arb"));
}

std::shared_ptr<ports::InstrumentOptions> AutomationServer::Options() {
    return std::make_shared<AutomationOptions>(Child(L"Options"));
}

std::vector<std::string> AutomationServer::InstalledOptions() {
    return ToTexts(Child(L"Options").Get(L"Names"));
}

std::string AutomationServer::Model() {
    return m_server.GetText(L"Model");
}

void AutomationServer::PrepareForCapture() {
    m_server.Call(L"PrepareForCapture");
}

std::string AutomationServer::ModelName() {
    return m_server.GetText(L"ModelName");
}

void AutomationServer::SaveScreenImage(const std::string& file, std::int32_t format) {
    m_server.Call(L"SaveScreenImage", {ToVariant(file), ToVariant(format)});
}

std::vector<std::string> AutomationServer::SupportedModels() {
    return ToTexts(m_server.Get(L"SupportedModels"));
}

void AutomationServer::SetInstrumentSession(const std::shared_ptr<ports::IoSession>& session) {
    Child(L"Instrument").PutObject(L"IO", AutomationOf(session));
}

}  // namespace krv::windows
