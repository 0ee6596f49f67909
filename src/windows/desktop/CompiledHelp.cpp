#include "windows/desktop/CompiledHelp.h"

#include <objbase.h>
#include <windows.h>
#include <wrl/client.h>

namespace krv::windows {

// Interfaces have no destructor by rule.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
// No header declares it. It isn't in the unnamed namespace: the compiler would take it that nobody
// implements a class that it alone knows, and call nothing. Its first members are those that make
// and recognize files.
class HelpStorage : public IUnknown {
 public:
    virtual HRESULT STDMETHODCALLTYPE StgCreateDocfile(const WCHAR*, DWORD, DWORD, IStorage**) = 0;
    virtual HRESULT STDMETHODCALLTYPE StgCreateDocfileOnILockBytes(ILockBytes*, DWORD, DWORD,
                                                                   IStorage**) = 0;
    virtual HRESULT STDMETHODCALLTYPE StgIsStorageFile(const WCHAR*) = 0;
    virtual HRESULT STDMETHODCALLTYPE StgIsStorageILockBytes(ILockBytes*) = 0;
    virtual HRESULT STDMETHODCALLTYPE StgOpenStorage(const WCHAR* file, IStorage* priority,
                                                     DWORD mode, SNB excluded, DWORD reserved,
                                                     IStorage** opened) = 0;
};
#pragma GCC diagnostic pop

namespace {

constexpr CLSID HelpStorageClass = {
    0x5D02926A, 0x212E, 0x11D0, {0x9D, 0xF9, 0x00, 0xA0, 0xC9, 0x22, 0xE6, 0xEC}};
constexpr IID HelpStorageInterface = {
    0x88CC31DE, 0x27AB, 0x11D0, {0x9D, 0xF9, 0x00, 0xA0, 0xC9, 0x22, 0xE6, 0xEC}};

}  // namespace

bool LacksTopic(const std::wstring& file, const std::wstring& topic) {
    Microsoft::WRL::ComPtr<HelpStorage> help;
    Microsoft::WRL::ComPtr<IStorage> pages;
    if (FAILED(CoCreateInstance(HelpStorageClass, nullptr, CLSCTX_INPROC_SERVER,
                                HelpStorageInterface,
                                reinterpret_cast<void**>(help.GetAddressOf()))) ||
        FAILED(help->StgOpenStorage(file.c_str(), nullptr, STGM_READ | STGM_SHARE_DENY_WRITE,
                                    nullptr, 0, pages.GetAddressOf()))) {
        return false;
    }
    Microsoft::WRL::ComPtr<IStream> page;
    return FAILED(pages->OpenStream(topic.c_str(), nullptr, STGM_READ, 0, page.GetAddressOf()));
}

}  // namespace krv::windows
