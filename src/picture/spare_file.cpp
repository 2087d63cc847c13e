#include "picture/spare_file.h"

#include "base/whole_file.h"

#include <QFile>

#include <utility>

void SpareFile::PutAway(const QString& path, qint64 now) {
    constexpr qint64 longest = 20'000;
    const auto recent = [now](std::optional<qint64> time) { return time && now - *time < longest; };
    if (!last.isEmpty() && path != last) WholeFile::Forget(last);
    const bool same = path == std::exchange(last, path);
    const bool often = recent(std::exchange(used, now)) && same;
    if (often && !since) since = now;
    if (often && recent(since)) {
        WholeFile::SetAside(path);
        return;
    }
    since.reset();
    QFile::remove(path);
}
