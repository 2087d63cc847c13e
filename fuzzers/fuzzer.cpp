#include "fuzzer.h"

#include <QHash>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

QHash<QByteArray, const Fuzzer*>& All() {
    static QHash<QByteArray, const Fuzzer*> all;
    return all;
}

}  // namespace

Fuzzer::Fuzzer(const char* ownName, Routine ownRun) : name(ownName), run(ownRun) {
    All().insert(name, this);
}

const Fuzzer* Fuzzer::Named(const QByteArray& name) {
    return All().value(name);
}

const Fuzzer& Fuzzer::Only() {
    return **All().cbegin();
}

void Failed(const char* condition, const char* file, int line) {
    static_cast<void>(std::fprintf(stderr, "%s:%d: not true: %s\n", file, line, condition));
    std::abort();
}

QByteArrayList Parts(const QByteArray& bytes, int count) {
    const QByteArray border = "\n%%\n";
    QByteArrayList parts;
    qsizetype at = 0;
    while (parts.size() < count - 1 && at <= bytes.size()) {
        const qsizetype end = bytes.indexOf(border, at);
        parts << bytes.mid(at, end < 0 ? -1 : end - at);
        at = end < 0 ? bytes.size() + 1 : end + border.size();
    }
    parts << bytes.mid(at);
    while (parts.size() < count) parts << QByteArray();
    return parts;
}

void InPieces(const QByteArray& bytes, const std::function<void(const QByteArray&)>& take) {
    std::minstd_rand lengths(1U + qChecksum(bytes));  // the same for each run
    for (qsizetype at = 0; at < bytes.size();) {
        const auto length = static_cast<qsizetype>(1 + lengths() % 17 * (lengths() % 3 / 2));
        take(bytes.mid(at, length));
        at += length;
    }
}
