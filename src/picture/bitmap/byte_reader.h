#pragma once

#include <QByteArrayView>

// Goes through bytes that nobody vouches for: what lies behind the end reads as zero, and Failed()
// tells it.
class ByteReader {
  public:
    explicit ByteReader(QByteArrayView ownBytes) : bytes(ownBytes) {}

    [[nodiscard]] bool Failed() const { return failed; }
    [[nodiscard]] qsizetype At() const { return at; }
    void Seek(qint64 place) {
        failed = failed || place < 0 || place > bytes.size();
        if (!failed) at = place;
    }

    int Byte() {
        const QByteArrayView one = Take(1);
        return one.isEmpty() ? 0 : static_cast<uchar>(one.front());
    }
    // Two bytes, four bytes; `big`: the higher ones come first.
    int Word(bool big = false) {
        const int first = Byte();
        const int second = Byte();
        return big ? first << 8 | second : second << 8 | first;
    }
    qint64 Long(bool big = false) {
        const qint64 first = Word(big);
        const qint64 second = Word(big);
        return big ? first << 16 | second : second << 16 | first;
    }
    // The next bytes; none of them when there are fewer.
    QByteArrayView Take(qsizetype count) {
        failed = failed || count < 0 || count > bytes.size() - at;
        if (failed) return {};
        at += count;
        return bytes.sliced(at - count, count);
    }

  private:
    QByteArrayView bytes;
    qsizetype at = 0;
    bool failed = false;
};
