#pragma once

#include <QString>

// Where visitors most likely find the picture that is sent to this server and folder: providers
// call the FTP server "ftp.…" and the web server "www.…", and what is public lies in one of a few
// folders. A guess that people correct.
[[nodiscard]] QString PublicAddress(const QString& server, const QString& folder);

// The address of the picture in a folder of this computer.
[[nodiscard]] QString LocalAddress(const QString& folder);

// A line for a web page that shows the picture at that address.
[[nodiscard]] QString ImageHtml(const QString& address);
