#pragma once

#include "net/ftp/ftp_server.h"
#include "net/picture_server.h"

#include <memory>

// A server of that way, with everything that it needs. limits: of one that speaks FTP.
[[nodiscard]] std::unique_ptr<PictureServer> MakeServer(
    Protocol way, const PictureServer::Surroundings& surroundings, const FtpLimits& limits = {});
