#include "windows/com/Registration.h"

#include <cwchar>
#include <filesystem>
#include <string>
#include <vector>

#include "common/Error.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/com/AddInKeys.h"
#include "windows/com/ComModule.h"
#include "windows/com/RegistryKey.h"
#include "windows/com/TypeLibraryKeys.h"

namespace krv::windows {
namespace {

constexpr const wchar_t* ClassesPath = L"Software\\Classes";
#ifdef _WIN64
constexpr REGSAM OtherView = KEY_WOW64_32KEY;
#else
constexpr REGSAM OtherView = KEY_WOW64_64KEY;
#endif

HKEY RootOf(RegistrationScope scope) {
    return scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

RegistryKey OpenClasses(RegistrationScope scope) {
    return {RootOf(scope), ClassesPath};
}

std::wstring ClassKey(const std::wstring& id) {
    return L"CLSID\\" + id;
}

bool IsThisFile(const std::wstring& file) {
    std::error_code failure;
    const std::wstring own = ThisModulePath();
    return _wcsicmp(file.c_str(), own.c_str()) == 0 ||
           std::filesystem::equivalent(file, own, failure);
}

bool IsThere(const std::wstring& file) {
    std::error_code failure;
    return std::filesystem::exists(file, failure);
}

// True when the class belongs to another file that is still there.
bool IsAnothers(const std::wstring& file) {
    return !file.empty() && !IsThisFile(file) && IsThere(file);
}

// The module, or at least the class, that has taken one of a class's places in the registry; empty
// when the places are free or this file's own.
std::wstring OtherOwner(const RegistryKey& classes, const ComClass& description) {
    const std::wstring own = GuidText(description.id);
    const std::wstring registered = classes.Read(ToWide(description.progId) + L"\\CLSID");
    if (!registered.empty() && _wcsicmp(registered.c_str(), own.c_str()) != 0) {
        for (const wchar_t* kind : {L"\\InprocServer32", L"\\LocalServer32"}) {
            if (const auto file = classes.Read(ClassKey(registered) + kind); !file.empty()) {
                return file;
            }
        }
        return L"the class " + registered;
    }
    const std::wstring file = classes.Read(ClassKey(own) + L"\\InprocServer32");
    return IsAnothers(file) ? file : std::wstring();
}

// Either scope's registration would be hidden by the new one, or hide it.
void RequireFree(const ComClass& description) {
    for (const auto scope : {RegistrationScope::Machine, RegistrationScope::User}) {
        HKEY key = nullptr;
        // Looking must not make keys, nor take an administrator.
        if (RegOpenKeyExW(RootOf(scope), ClassesPath, 0, KEY_READ, &key) != ERROR_SUCCESS) {
            continue;
        }
        const RegistryKey classes(key);
        if (const std::wstring owner = OtherOwner(classes, description); !owner.empty()) {
            throw Error(static_cast<std::int32_t>(HRESULT_FROM_WIN32(ERROR_ALREADY_REGISTERED)),
                        "The component \"" + std::string(description.progId) +
                            "\" is already registered by " + ToUtf8(owner) +
                            ". Unregister that first if this one shall take its place.",
                        ThisComModule().name);
        }
    }
}

void RegisterControl(const RegistryKey& classes, const std::wstring& key, DWORD status) {
    classes.Write(key + L"\\Control", nullptr, {});
    classes.Write(key + L"\\MiscStatus", nullptr, L"0");
    classes.Write(key + L"\\MiscStatus\\1", nullptr, std::to_wstring(status));
}

void RegisterClass(const RegistryKey& classes, const ComClass& description,
                   const TypeLibraryKeys& library) {
    const std::wstring id = GuidText(description.id);
    const std::wstring key = ClassKey(id);
    classes.Write(key, nullptr, description.title);
    classes.Write(key + L"\\InprocServer32", nullptr, ThisModulePath());
    classes.Write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    classes.Write(key + L"\\ProgID", nullptr, ToWide(description.progId));
    classes.Write(key + L"\\Programmable", nullptr, {});
    classes.Write(key + L"\\TypeLib", nullptr, library.Id());
    classes.Write(key + L"\\Version", nullptr, library.Version());
    if (description.IsControl()) {
        RegisterControl(classes, key, description.miscStatus);
    }
    classes.Write(ToWide(description.progId), nullptr, description.title);
    classes.Write(ToWide(description.progId) + L"\\CLSID", nullptr, id);
}

// The ProgID serves the 32-bit and the 64-bit library alike.
void UnregisterClass(const RegistryKey& classes, const ComClass& description) {
    const std::wstring id = GuidText(description.id);
    const std::wstring server = ClassKey(id) + L"\\InprocServer32";
    if (IsAnothers(classes.Read(server))) {
        return;
    }
    const bool isShared = !classes.Read(server, OtherView).empty() &&
                          classes.Read(server, OtherView) != classes.Read(server);
    classes.DeleteTree(ClassKey(id));
    const std::wstring registered = classes.Read(ToWide(description.progId) + L"\\CLSID");
    if (!isShared && _wcsicmp(registered.c_str(), id.c_str()) == 0) {
        classes.DeleteTree(ToWide(description.progId));
    }
}

// What the user has registered hides what the machine has: where its file has gone, nothing would
// work for this user.
void RemoveStaleUserKeys(const TypeLibraryKeys& library) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, ClassesPath, 0, KEY_READ | KEY_WRITE | DELETE, &key) !=
        ERROR_SUCCESS) {
        return;
    }
    const RegistryKey classes(key);
    const auto isStale = [](const std::wstring& file) { return !file.empty() && !IsThere(file); };
    for (const ComClass& description : ThisComModule().classes) {
        if (isStale(classes.Read(ClassKey(GuidText(description.id)) + L"\\InprocServer32"))) {
            UnregisterClass(classes, description);
        }
    }
    if (isStale(library.FileIn(classes))) {
        library.Remove(classes);
    }
}

}  // namespace

void RegisterModule(RegistrationScope scope) {
    for (const ComClass& description : ThisComModule().classes) {
        RequireFree(description);
    }
    const RegistryKey classes = OpenClasses(scope);
    const TypeLibraryKeys library;
    if (scope == RegistrationScope::Machine) {
        RemoveStaleUserKeys(library);
    }
    try {
        for (const ComClass& description : ThisComModule().classes) {
            RegisterClass(classes, description, library);
        }
        library.Register(classes);
        RegisterAddIns(RootOf(scope));
    } catch (...) {
        UnregisterModule(scope);
        throw;
    }
}

void UnregisterModule(RegistrationScope scope) {
    const RegistryKey classes = OpenClasses(scope);
    for (const ComClass& description : ThisComModule().classes) {
        UnregisterClass(classes, description);
    }
    TypeLibraryKeys().Unregister(classes);
    UnregisterAddIns(RootOf(scope), [&classes](const char* progId) {
        return classes.Read(ToWide(progId) + L"\\CLSID").empty();
    });
    if (scope == RegistrationScope::User) {
        // A user who had never registered a class had none of these either.
        for (const wchar_t* group : {L"CLSID", L"Interface", L"TypeLib"}) {
            classes.DeleteWhenEmpty(group);
        }
    }
}

}  // namespace krv::windows
