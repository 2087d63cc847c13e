#pragma once

#include "platform/windows/com.h"

// COM's classes have no virtual destructor: they are never deleted through their interfaces.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What every COM object has, for one that a test keeps alive itself.
template <class Interface>
class ComStub : public Interface {
  public:
    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
};
