#pragma once

#include <QFile>
#include <QString>

#include <sys/resource.h>
#include <unistd.h>

// While it lives a process gets no more files, sockets and pipes than so many; nothing that it has
// open is taken away, or it could not even wait any more.
class FewFiles {
  public:
    explicit FewFiles(rlim_t left, qint64 ownProcess = getpid())
        : process(static_cast<pid_t>(ownProcess)) {
        rlimit tight{};
        while (QFile::exists(QString("/proc/%1/fd/%2").arg(process).arg(tight.rlim_cur)))
            ++tight.rlim_cur;
        prlimit(process, RLIMIT_NOFILE, nullptr, &before);
        tight = {tight.rlim_cur + left, before.rlim_max};
        prlimit(process, RLIMIT_NOFILE, &tight, nullptr);
    }
    ~FewFiles() { prlimit(process, RLIMIT_NOFILE, &before, nullptr); }
    FewFiles(const FewFiles&) = delete;
    FewFiles& operator=(const FewFiles&) = delete;

  private:
    pid_t process;
    rlimit before{};
};
