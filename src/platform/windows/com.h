#pragma once

#include "platform/windows/system.h"

#include <objbase.h>

#include <memory>

// COM must be set up on each thread that uses its objects, and each object released. These do so at
// the beginning and at the end of their scope.

class ComThread {
  public:
    // A thread that is set up otherwise already, as Qt does it with its own, serves as well.
    ComThread() : mine(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComThread() {
        if (mine) CoUninitialize();
    }
    ComThread(const ComThread&) = delete;
    ComThread& operator=(const ComThread&) = delete;

  private:
    bool mine;
};

struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class T>
using ComPtr = std::unique_ptr<T, ComRelease>;

// Null when the object has no such interface.
template <class T>
ComPtr<T> ComQuery(IUnknown& object) {
    void* found = nullptr;
    object.QueryInterface(__uuidof(T), &found);
    return ComPtr<T>(static_cast<T*>(found));
}
