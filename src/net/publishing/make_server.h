#pragma once

#include "net/ftp/ftp_server.h"
#include "net/picture_server.h"

#include <map>
#include <memory>

// A server of that way, with everything that it needs. limits: of one that speaks FTP.
[[nodiscard]] std::unique_ptr<PictureServer> MakeServer(
    Protocol way, const PictureServer::Surroundings& surroundings, const FtpLimits& limits = {});

// One server of each kind, made when it is first wanted and kept: what is under way on it may still
// be coming to its end when the settings name another.
class PictureServers {
  public:
    // control: of the one that speaks FTP; outlives the servers.
    PictureServers(const PictureServer::Surroundings& surroundings, FTP& control);

    // A word that names no protocol has no server of its own either.
    [[nodiscard]] PictureServer& Of(Protocol way);

  private:
    PictureServer::Surroundings around;
    FtpServer ftp;
    std::map<Protocol, std::unique_ptr<PictureServer>> others;
};
