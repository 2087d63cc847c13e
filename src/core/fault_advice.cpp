#include "core/fault_advice.h"

#include "texts/texts.h"

#include <array>

namespace {

// In the order of the faults; none at all means that no picture comes.
constexpr std::array<QStringView, 16> keys{
    u"Silent",        u"NotConnected",   u"Busy",           u"Denied",
    u"BadFormat",     u"FileMissing",    u"Unreachable",    u"NoAnswer",
    u"WrongPassword", u"Forbidden",      u"AddressMissing", u"BadAddress",
    u"NotAPicture",   u"NoWholePicture", u"Silent",         u"Lost"};
static_assert(keys.size() == static_cast<std::size_t>(CaptureFault::Lost) + 1);

}  // namespace

QString FaultAdvice(CaptureFault fault, const Texts& texts) {
    return texts.Get("CameraFaults", keys.at(static_cast<std::size_t>(fault)).toString());
}
