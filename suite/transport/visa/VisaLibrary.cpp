#include "suite/transport/visa/VisaLibrary.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "suite/transport/visa/SharedLibrary.h"

namespace krv::suite {
namespace {

using LoadOutcome = SharedLibrary::Outcome;

std::string BitsHere() {
    return sizeof(void*) == 8 ? "64" : "32";
}

std::string LoadFault(const SharedLibrary& library, const std::string& name) {
    switch (library.outcome) {
        case LoadOutcome::Missing:
            return "there is no VISA library \"" + name + "\". Give the whole path of its file";
        case LoadOutcome::OtherBits:
            return "the VISA library " + name + " is not for " + BitsHere() +
                   "-bit programs. Install the " + BitsHere() +
                   "-bit VISA of the interface's maker";
        default:
            return "the VISA library " + name + " can't be loaded: " + library.reason;
    }
}

// Takes the function into the table; its name goes to the first that is missing.
template <class Function>
void Resolve(const SharedLibrary& library, const char* name, Function& function,
             std::string& missing) {
    function = reinterpret_cast<Function>(FunctionOf(library, name));
    if (function == nullptr && missing.empty()) {
        missing = name;
    }
}

VisaLibrary WithFunctions(const SharedLibrary& library, const std::string& name) {
    VisaLibrary visa;
    visa::Functions& functions = visa.functions;
    std::string missing;
    Resolve(library, "viOpenDefaultRM", functions.openDefaultRM, missing);
    Resolve(library, "viOpen", functions.open, missing);
    Resolve(library, "viClose", functions.close, missing);
    Resolve(library, "viWrite", functions.write, missing);
    Resolve(library, "viRead", functions.read, missing);
    Resolve(library, "viSetAttribute", functions.setAttribute, missing);
    Resolve(library, "viGetAttribute", functions.getAttribute, missing);
    Resolve(library, "viClear", functions.clear, missing);
    Resolve(library, "viReadSTB", functions.readStatusByte, missing);
    Resolve(library, "viGpibControlREN", functions.gpibControlRen, missing);
    Resolve(library, "viFindRsrc", functions.findResources, missing);
    Resolve(library, "viFindNext", functions.findNext, missing);
    Resolve(library, "viStatusDesc", functions.statusDescription, missing);
    if (!missing.empty()) {
        visa.fault = name + " is no VISA library: it has no " + missing;
    }
    return visa;
}

VisaLibrary LoadOne(const std::string& name, LoadOutcome& outcome) {
    const SharedLibrary library = LoadSharedLibrary(name);
    outcome = library.outcome;
    return outcome == LoadOutcome::Loaded ? WithFunctions(library, name)
                                          : VisaLibrary{.fault = LoadFault(library, name)};
}

struct FailureMeaning {
    visa::Status failure;
    std::string_view text;
};

constexpr std::array<FailureMeaning, 16> Meanings{
    {{visa::StatusCode::ResourceNotFound,
      "VISA finds no such instrument. Check that it is switched on and connected, and its address"},
     {visa::StatusCode::InvalidName, "VISA does not take this as the name of a resource"},
     {visa::StatusCode::ResourceLocked,
      "another program has locked the instrument. Close that program, then try again"},
     {visa::StatusCode::ResourceBusy,
      "another program uses the interface. Close that program, then try again"},
     {visa::StatusCode::NobodyListens,
      "no instrument listens at this GPIB address. Check that it is switched on, and its address"},
     {visa::StatusCode::NotInCharge,
      "another controller is in charge of the GPIB. Leave only one controller on the bus"},
     {visa::StatusCode::NoPermission,
      "you may not use this device. Let the administrator give you access to it; on Linux a udev "
      "rule of the VISA library does"},
     {visa::StatusCode::LibraryMissing,
      "VISA lacks the part for this kind of interface. Install it with the VISA of the interface's "
      "maker"},
     {visa::StatusCode::InterfaceUnknown,
      "VISA has no interface of this number. Its configuration program lists the interfaces"},
     {visa::StatusCode::NotSupported, "VISA can't do this with such a resource"},
     {visa::StatusCode::InputOutput,
      "the interface reports an error. Check the cable, and that the instrument is switched on"},
     {visa::StatusCode::TimeOut, "the instrument did not answer in time"},
     {visa::StatusCode::ConnectionLost, "the instrument closed the connection"},
     {visa::StatusCode::ParityError,
      "the instrument's line has another parity or baud rate. Set both sides alike"},
     {visa::StatusCode::FramingError,
      "the instrument's line has another baud rate or stop bits. Set both sides alike"},
     {visa::StatusCode::OverrunError,
      "the line brings more than this computer takes. Use flow=hardware or a lower baud rate"}}};

}  // namespace

VisaLibrary LoadVisa(const std::string& name) {
    LoadOutcome outcome{};
    if (!name.empty()) {
        return LoadOne(name, outcome);
    }
    VisaLibrary result;
    for (const std::string& usual : UsualVisaLibraries()) {
        VisaLibrary library = LoadOne(usual, outcome);
        if (library.fault.empty()) {
            return library;
        }
        if (outcome != LoadOutcome::Missing && result.fault.empty()) {
            result = library;
        }
    }
    result.isAbsent = result.fault.empty();
    if (result.isAbsent) {
        result.fault =
            "there is no VISA library on this computer. Install the one of the interface's maker, "
            "or give the instrument's address in the network";
    }
    return result;
}

std::string MeaningOf(visa::Status failure) {
    const auto* const found = std::ranges::find(Meanings, failure, &FailureMeaning::failure);
    return found == Meanings.end() ? std::string() : std::string(found->text);
}

}  // namespace krv::suite
