#pragma once

#include "core/main_state.h"
#include "core/run_state.h"
#include "picture/offline_filter.h"

class Connectivity;
class UploadTransaction;

// The picture that tells viewers that the camera is off, published in place of the camera's when
// the operator stops: the operator's file or, with the offline filter, the camera picture blended
// with it.
class OfflinePicture {
  public:
    struct Parts {
        Waiting& Wait;
        Connectivity& Net;
        UploadTransaction& Transaction;
        PicturePipeline& Pictures;
        PictureState& Picture;
        StatusDisplay& Display;
        MainState& State;
    };
    // All of them must outlive the offline picture.
    explicit OfflinePicture(const Parts& parts);

    // Whether the settings want one when publishing stops.
    [[nodiscard]] bool Wanted() const;

    // How it is published: what the run goes on to do once the connection stands, and whether the
    // camera is asked for a picture to blend with.
    struct Manner {
        RunState Then = RunState::PublishingOffline;
        bool Blends = true;
    };
    // Makes the picture and publishes it under the names of every other one: on the server, which
    // it logs in to again where the connection is gone, or in the local folder. Shows no
    // message boxes and ends when the program closes. Returns whether it is public; otherwise the
    // status says why not and the last picture stays.
    [[nodiscard]] bool SendOfflinePicture(const Manner& how);
    [[nodiscard]] bool SendOfflinePicture() { return SendOfflinePicture({}); }

  private:
    [[nodiscard]] bool Prepare(QString& file, bool blends);
    [[nodiscard]] bool PreparePlain(const FilePicture& offline, QString& file);
    [[nodiscard]] bool PutLocal(const QString& file);
    [[nodiscard]] bool PutOnServer(const QString& file, RunState then);
    [[nodiscard]] bool Connect(RunState then);
    [[nodiscard]] QString LocalTarget() const;

    Parts parts;
    OfflineFilter filter;
};
