#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What the web page of the program is to show.
struct WebPage {
    QString Title = {};
    QString Picture = {};       // the file beside it
    int Seconds = 30;           // from one picture to the next
    QStringList Earlier = {};   // the files of former pictures, the newest first
    QString EarlierWords = {};  // in front of them, for visitors without scripts
    QString Language = {};      // of those words: "de"
};

// The page that is shipped with these filled in.
[[nodiscard]] QByteArray FilledPage(const QByteArray& shipped, const WebPage& values);

// Whether a file that begins so was such a page, which may be replaced.
[[nodiscard]] bool IsOurPage(const QByteArray& beginning);
