#include "platform/windows/camera_monikers.h"

void ForEachCamera(const std::function<bool(IMoniker& camera)>& each) {
    void* found = nullptr;
    if (FAILED(CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(ICreateDevEnum), &found)))
        return;
    const ComPtr<ICreateDevEnum> system(static_cast<ICreateDevEnum*>(found));
    IEnumMoniker* list = nullptr;
    if (system->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &list, 0) != S_OK) return;
    const ComPtr<IEnumMoniker> cameras(list);
    IMoniker* next = nullptr;
    while (cameras->Next(1, &next, nullptr) == S_OK) {
        const ComPtr<IMoniker> camera(next);
        if (!each(*camera)) return;
    }
}

QString AddressOf(IMoniker& camera) {
    IBindCtx* found = nullptr;
    if (CreateBindCtx(0, &found) != S_OK) return {};
    const ComPtr<IBindCtx> context(found);
    LPOLESTR text = nullptr;
    if (camera.GetDisplayName(context.get(), nullptr, &text) != S_OK) return {};
    const QString name = QString::fromWCharArray(text);
    CoTaskMemFree(text);
    // In FFmpeg's addresses a colon separates the picture's device from the sound's.
    return QStringLiteral("video=") + QString(name).replace(u':', u'_');
}

ComPtr<IBaseFilter> FilterAt(const QString& address) {
    ComPtr<IBaseFilter> filter;
    ForEachCamera([&](IMoniker& camera) {
        if (AddressOf(camera) != address) return true;
        void* found = nullptr;
        if (camera.BindToObject(nullptr, nullptr, __uuidof(IBaseFilter), &found) == S_OK)
            filter.reset(static_cast<IBaseFilter*>(found));
        return false;
    });
    return filter;
}
