// The interfaces that say what an I/O session can do besides. A session that is asked for
// one of them and doesn't offer it is of another sort. They are part of the suite's own type
// library, from which their identities and layouts come.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <unknwn.h>

namespace krv::windows {

#pragma GCC diagnostic push
// References destroy COM objects, never a deleted interface.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A session that runs over a serial (RS-232) line.
struct ICvnSerialSession : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_BaudRate(long* baudRate) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DataBits(long* dataBits) = 0;
    // 1 one, 2 one and a half, 3 two.
    virtual HRESULT STDMETHODCALLTYPE get_StopBits(long* stopBits) = 0;
};

// A session that can hand the instrument back to its front panel.
struct ICvnGpibSession : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE ReturnToLocal() = 0;
};

#pragma GCC diagnostic pop

}  // namespace krv::windows

__CRT_UUID_DECL(krv::windows::ICvnSerialSession, 0x52e1a9c4, 0x3f27, 0x4d0b, 0x8a, 0x55, 0x6b, 0x8f,
                0x0f, 0x3c, 0x11, 0x01)
__CRT_UUID_DECL(krv::windows::ICvnGpibSession, 0x52e1a9c4, 0x3f27, 0x4d0b, 0x8a, 0x55, 0x6b, 0x8f,
                0x0f, 0x3c, 0x11, 0x02)
