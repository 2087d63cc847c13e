#pragma once

#include "core/public_names.h"

struct ServerAccess;

// Where visitors most likely find the picture, or another file, that is sent there. Web servers and
// object storage have it where it is sent to. Else providers call the FTP server "ftp.…" and the
// web server "www.…", and what is public lies in one of a few folders. A guess that people correct.
[[nodiscard]] QString PublicAddress(const ServerAccess& access,
                                    const QString& file = PublicNames::Picture);

// The address of the picture in a folder of this computer.
[[nodiscard]] QString LocalAddress(const QString& folder);

// A line for a web page that shows the picture at that address.
[[nodiscard]] QString ImageHtml(const QString& address);
