#include "net/publishing/make_server.h"

#include "net/sftp/sftp_server.h"
#include "net/web/http_server.h"
#include "net/web/s3_server.h"

std::unique_ptr<PictureServer> MakeServer(Protocol way,
                                          const PictureServer::Surroundings& surroundings,
                                          const FtpLimits& limits) {
    if (way == Protocol::Sftp) return std::make_unique<SftpServer>(surroundings);
    if (way == Protocol::Http || way == Protocol::Https)
        return std::make_unique<HttpServer>(surroundings);
    if (way == Protocol::S3) return std::make_unique<S3Server>(surroundings);
    auto* control = new FTP(surroundings.Wait, surroundings.Display);
    auto server = std::make_unique<FtpServer>(surroundings, *control, limits);
    control->setParent(server.get());
    return server;
}

PictureServers::PictureServers(const PictureServer::Surroundings& surroundings, FTP& control)
    : around(surroundings), ftp(surroundings, control) {}

PictureServer& PictureServers::Of(Protocol way) {
    if (SpeaksFtp(way) || way == Protocol::Unknown) return ftp;
    std::unique_ptr<PictureServer>& other = others[way == Protocol::Http ? Protocol::Https : way];
    if (!other) other = MakeServer(way, around);
    return *other;
}
