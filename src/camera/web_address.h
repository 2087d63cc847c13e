#pragma once

#include <QByteArray>
#include <QMutex>

#include <atomic>

// The last picture of an address on the web with what its server calls it by, so that it need not
// be sent again while it stays the same.
struct WebPicture {
    QByteArray Bytes = {};
    QByteArray Tag = {};       // "ETag"
    QByteArray Modified = {};  // "Last-Modified"

    [[nodiscard]] bool Named() const { return !Tag.isEmpty() || !Modified.isEmpty(); }
};

// What an address on the web has turned out to be. Outlives the sources that are opened with it.
class WebAddress {
  public:
    enum class Kind {
        Unknown,
        Still,   // one picture for each question
        Stream,  // anything else, which FFmpeg opens
    };
    std::atomic<Kind> Is = Kind::Unknown;
    // How many sources wait for an answer now: the one that is open, and those that are ending.
    std::atomic<int> Asking = 0;

    [[nodiscard]] WebPicture Last() {
        const QMutexLocker lock(&mutex);
        return last;
    }
    void SetLast(const WebPicture& picture) {
        const QMutexLocker lock(&mutex);
        last = picture;
    }

  private:
    QMutex mutex;
    WebPicture last;
};
