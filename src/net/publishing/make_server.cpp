#include "net/publishing/make_server.h"

std::unique_ptr<PictureServer> MakeServer(Protocol /*way*/,
                                          const PictureServer::Surroundings& surroundings,
                                          const FtpLimits& limits) {
    auto* control = new FTP(surroundings.Wait, surroundings.Display);
    auto server = std::make_unique<FtpServer>(surroundings, *control, limits);
    control->setParent(server.get());
    return server;
}
