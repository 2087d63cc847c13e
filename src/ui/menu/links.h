#pragma once

#include <QString>
#include <QUrl>

#include <array>
#include <functional>

// Opens a page or a file with the program that the system has for it.
using Opener = std::function<void(const QUrl& address)>;

// Every address of the project's pages that the program leads to.
namespace Links {

// In the order of the entries of the window frmWeb.
inline const std::array Web{
    QUrl(QStringLiteral("https://stillpost.example/")),
    QUrl(QStringLiteral("https://stillpost.example/manual/")),
    QUrl(QStringLiteral("https://stillpost.example/questions/")),
    QUrl(QStringLiteral("https://stillpost.example/news/")),
};

// What installs the help pages.
inline const QUrl HelpInstaller{QStringLiteral("https://stillpost.example/download/K7_Help.exe")};
inline const QUrl GermanHelpInstaller{
    QStringLiteral("https://stillpost.example/download/K7_Hilfe.exe")};

}  // namespace Links
