#include "platform/windows/property_pages.h"

// After the system's header.
#include <olectl.h>

#include <vector>

namespace {

std::vector<CLSID> PagesOf(IUnknown& object) {
    const auto driver = ComQuery<ISpecifyPropertyPages>(object);
    CAUUID found{};
    if (!driver || FAILED(driver->GetPages(&found))) return {};
    const std::vector<CLSID> pages(found.pElems, found.pElems + found.cElems);
    CoTaskMemFree(found.pElems);
    return pages;
}

}  // namespace

bool HasPropertyPages(IUnknown& object) {
    return !PagesOf(object).empty();
}

void ShowPropertyPages(IUnknown& object, const QString& title, quintptr window) {
    std::vector<CLSID> pages = PagesOf(object);
    IUnknown* shown = &object;
    OleCreatePropertyFrame(reinterpret_cast<HWND>(window), 0, 0, title.toStdWString().c_str(), 1,
                           &shown, static_cast<ULONG>(pages.size()), pages.data(),
                           LOCALE_USER_DEFAULT, 0, nullptr);
}
