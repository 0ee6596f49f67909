// The part of the published interface of VISA libraries that is used here. The library is found at
// run time, so that none is needed to build or to start the program.
#pragma once

#include <cstdint>

// 32-bit Windows has two ways to call a function; these libraries take the one of the system's own.
#if defined(_WIN32) && !defined(_WIN64)
#define KRV_VISA_CALL __stdcall
#else
#define KRV_VISA_CALL
#endif

namespace krv::suite::visa {

// Errors are negative. Others than 0 that aren't negative tell more about a success.
using Status = std::int32_t;
// A session, the resource manager or a list of resources.
using Object = std::uint32_t;
using Attribute = std::uint32_t;
// As wide as a pointer in every process.
using AttributeState = std::uintptr_t;
using Word = std::uint16_t;
using Byte = std::uint8_t;

// How long a description may be, with its end.
inline constexpr std::uint32_t DescriptionSize = 256;
inline constexpr std::uint32_t ShareAccess = 0;
// For viGpibControlREN: the addressed instrument goes to local.
inline constexpr Word AddressGoToLocal = 6;

struct Functions {
    Status(KRV_VISA_CALL* openDefaultRM)(Object* manager) = nullptr;
    Status(KRV_VISA_CALL* open)(Object manager, const char* name, std::uint32_t access,
                                std::uint32_t timeOutMs, Object* session) = nullptr;
    Status(KRV_VISA_CALL* close)(Object object) = nullptr;
    Status(KRV_VISA_CALL* write)(Object session, const Byte* bytes, std::uint32_t count,
                                 std::uint32_t* done) = nullptr;
    Status(KRV_VISA_CALL* read)(Object session, Byte* bytes, std::uint32_t count,
                                std::uint32_t* done) = nullptr;
    Status(KRV_VISA_CALL* setAttribute)(Object object, Attribute attribute,
                                        AttributeState value) = nullptr;
    // Writes as many bytes as the attribute has.
    Status(KRV_VISA_CALL* getAttribute)(Object object, Attribute attribute, void* value) = nullptr;
    Status(KRV_VISA_CALL* clear)(Object session) = nullptr;
    Status(KRV_VISA_CALL* readStatusByte)(Object session, Word* status) = nullptr;
    Status(KRV_VISA_CALL* gpibControlRen)(Object session, Word mode) = nullptr;
    Status(KRV_VISA_CALL* findResources)(Object manager, const char* pattern, Object* list,
                                         std::uint32_t* count, char* first) = nullptr;
    Status(KRV_VISA_CALL* findNext)(Object list, char* next) = nullptr;
    Status(KRV_VISA_CALL* statusDescription)(Object object, Status status, char* text) = nullptr;
};

namespace AttributeId {
inline constexpr Attribute SendEnd = 0x3FFF0016;
inline constexpr Attribute TermChar = 0x3FFF0018;
inline constexpr Attribute TimeOutMs = 0x3FFF001A;
inline constexpr Attribute BaudRate = 0x3FFF0021;
inline constexpr Attribute DataBits = 0x3FFF0022;
inline constexpr Attribute Parity = 0x3FFF0023;
inline constexpr Attribute StopBits = 0x3FFF0024;
inline constexpr Attribute FlowControl = 0x3FFF0025;
inline constexpr Attribute TermCharEnabled = 0x3FFF0038;
inline constexpr Attribute SerialEndIn = 0x3FFF00B3;
inline constexpr Attribute SerialEndOut = 0x3FFF00B4;
inline constexpr Attribute InterfaceType = 0x3FFF0171;
inline constexpr Attribute ResourceClass = 0xBFFF0001;
}  // namespace AttributeId

// Values of InterfaceType.
namespace InterfaceCode {
inline constexpr Word Gpib = 1;
inline constexpr Word Serial = 4;
inline constexpr Word Lan = 6;
inline constexpr Word Usb = 7;
}  // namespace InterfaceCode

namespace StatusCode {
inline constexpr Status EndReceived = 0;
constexpr Status Failure(std::uint32_t number) {
    return static_cast<Status>(0xBFFF0000U | number);
}
inline constexpr Status ResourceLocked = Failure(0x0F);
inline constexpr Status ResourceNotFound = Failure(0x11);
inline constexpr Status InvalidName = Failure(0x12);
inline constexpr Status TimeOut = Failure(0x15);
inline constexpr Status InputOutput = Failure(0x3E);
inline constexpr Status NobodyListens = Failure(0x5F);
inline constexpr Status NotInCharge = Failure(0x60);
inline constexpr Status NotSupported = Failure(0x67);
inline constexpr Status ParityError = Failure(0x6A);
inline constexpr Status FramingError = Failure(0x6B);
inline constexpr Status OverrunError = Failure(0x6C);
inline constexpr Status ResourceBusy = Failure(0x72);
inline constexpr Status LibraryMissing = Failure(0x9E);
inline constexpr Status InterfaceUnknown = Failure(0xA5);
inline constexpr Status ConnectionLost = Failure(0xA6);
inline constexpr Status NoPermission = Failure(0xA8);
}  // namespace StatusCode

}  // namespace krv::suite::visa
