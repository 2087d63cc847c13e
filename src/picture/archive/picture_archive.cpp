#include "picture/archive/picture_archive.h"

#include "base/clock.h"
#include "base/status_display.h"

#include <QFile>
#include <QWaitCondition>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr qsizetype mostWaiting = 100;  // pictures
constexpr qint64 mostWaitingBytes = 32 * 1024 * 1024;
constexpr unsigned long lastMoment = 2000;  // milliseconds, at the end

QString StatusText(ArchiveTrouble trouble, const QString& folder) {
    switch (trouble) {
        case ArchiveTrouble::None:
            return QStringLiteral("Archive goes on");
        case ArchiveTrouble::Name:
            break;  // the settings say it
        case ArchiveTrouble::Full:
            return "Archive pauses: less than 200 MB left on the disk of " + folder;
        case ArchiveTrouble::Folder:
            return "Archive pauses: cannot write " + folder;
        case ArchiveTrouble::Silent:
            return "Archive pauses: no answer from " + folder;
    }
    return {};
}

}  // namespace

// What waits to be done in one folder. Shared with the thread, which may hang in the system for
// good: then another folder gets another one.
struct PictureArchive::Work {
    explicit Work(const QString& path) : Path(path), Folder(path) {}

    struct Picture {
        QByteArray Bytes;
        ArchiveSettings Settings;
        QDateTime Time;
        QLocale Locale;
        qint64 Now;
    };
    using Report = std::function<void(const State&)>;

    const QString Path;
    ArchiveFolder Folder;  // of the thread alone

    QMutex Mutex;
    QWaitCondition Written;
    QList<Picture> Waiting;  // the one that is being written, too
    qint64 WaitingBytes = 0;
    bool Running = false;
    bool Ending = false;

    // Returns whether a thread is to be started; none: too much waits already.
    [[nodiscard]] std::optional<bool> Add(const Picture& picture);
    void Run(const Report& report);

  private:
    [[nodiscard]] std::optional<Picture> Next();
    [[nodiscard]] bool Free();
    void Done();
};

std::optional<bool> PictureArchive::Work::Add(const Picture& picture) {
    const QMutexLocker lock(&Mutex);
    const bool fits = Waiting.isEmpty() || WaitingBytes + picture.Bytes.size() <= mostWaitingBytes;
    if (!fits || Waiting.size() >= mostWaiting) return std::nullopt;
    Waiting << picture;
    WaitingBytes += picture.Bytes.size();
    return !std::exchange(Running, true);
}

std::optional<PictureArchive::Work::Picture> PictureArchive::Work::Next() {
    const QMutexLocker lock(&Mutex);
    Running = !Waiting.isEmpty();
    return Running ? std::optional(Waiting.first()) : std::nullopt;
}

// Nobody waits: there is time to remove what is too old.
bool PictureArchive::Work::Free() {
    const QMutexLocker lock(&Mutex);
    return Waiting.isEmpty() && !Ending;
}

void PictureArchive::Work::Done() {
    const QMutexLocker lock(&Mutex);
    WaitingBytes -= Waiting.takeFirst().Bytes.size();
    if (Waiting.isEmpty()) Written.wakeAll();
}

void PictureArchive::Work::Run(const Report& report) {
    while (const auto picture = Next()) {
        const ArchiveTrouble trouble =
            Folder.Keep(picture->Bytes, picture->Settings, picture->Time, picture->Locale);
        Done();
        report({trouble, Folder.Known()});
        const QDate today = picture->Time.date();
        bool more = trouble != ArchiveTrouble::Folder;
        while (more && Free()) more = Folder.Tidy(picture->Settings, today, picture->Now);
        if (more) continue;
        report({trouble, Folder.Known()});
    }
}

PictureArchive::PictureArchive(StatusDisplay& ownDisplay, const Clock& ownClock)
    : display(ownDisplay), clock(ownClock) {}

PictureArchive::~PictureArchive() {
    way.Close();
    if (!work) return;
    const QMutexLocker lock(&work->Mutex);
    work->Ending = true;
    if (!work->Waiting.isEmpty()) work->Written.wait(&work->Mutex, lastMoment);
}

bool PictureArchive::Working() const {
    if (!work) return false;
    const QMutexLocker lock(&work->Mutex);
    return work->Running;
}

bool PictureArchive::IsTurn(const ArchiveSettings& settings) {
    const int now = std::max(1, settings.ArchiveEvery);
    if (std::exchange(every, now) != now) turn = 0;
    const bool its = turn == 0;
    turn = (turn + 1) % every;
    return its;
}

void PictureArchive::Keep(const QString& picture, const ArchiveSettings& settings,
                          const QDateTime& time, const QLocale& locale) {
    const QString& folder = settings.ArchivePath;
    if (!settings.Archive || folder.isEmpty() || !IsTurn(settings)) return;
    QFile file(picture);
    if (!file.open(QIODevice::ReadOnly)) return;
    if (!work || work->Path != folder) work = std::make_shared<Work>(folder);
    const auto begin = work->Add({file.readAll(), settings, time, locale, clock.Milliseconds()});
    if (!begin) {
        Told({ArchiveTrouble::Silent, state.Sum}, folder);
    } else if (*begin) {
        // Of another folder nothing counts any more.
        const auto report = [this, way = way, own = work](const State& now) {
            way.Post([this, now, own] {
                if (own == work) Told(now, own->Path);
            });
        };
        StartDetached([own = work, report] { own->Run(report); });
    }
}

void PictureArchive::Told(const State& now, const QString& folder) {
    const ArchiveTrouble before = std::exchange(state, now).Is;
    if (before == now.Is) return;
    const bool wasTold = before != ArchiveTrouble::Name;
    const QString text = StatusText(now.Is, folder);
    if (wasTold && !text.isEmpty()) display.ShowStatus(text);
}
