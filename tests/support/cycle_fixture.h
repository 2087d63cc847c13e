#pragma once

#include "base/waiting.h"
#include "core/upload_cycle.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "net/ftp/ftp_server.h"
#include "net/page_control.h"
#include "picture/picture_pipeline.h"
#include "support/answering_boxes.h"
#include "support/recording_display.h"
#include "support/scripted_ftp_server.h"
#include "support/test_clock.h"
#include "support/test_platform.h"
#include "texts/texts.h"

#include <QTemporaryDir>

// A camera of which every picture is of another colour, and of another size when that is wanted;
// it can be pulled out, and hang.
class FakeCamera : public CaptureControl {
  public:
    bool Plugged = true;
    bool Frozen = false;
    int Grabs = 0;
    int Sizes = 1;  // how many different widths, and heights

    // Which grab a picture of that size is from.
    [[nodiscard]] int GrabOf(QSize size) const;

    [[nodiscard]] bool GrabFrame() override;
    [[nodiscard]] bool SaveDIB(const QString& path) override;
    void SetPreviewRate(int) override {}
    void SetPreview(bool) override {}
    [[nodiscard]] bool Running() const override { return Plugged; }
    [[nodiscard]] QString Reason() const override { return Plugged ? QString() : "Pulled out"; }
};

class RecordingPage : public PageControl {
  public:
    int Requests = 0;
    void Request(bool) override { ++Requests; }
};

// The upload cycle with everything below it, a server in this process and a camera of colours. The
// program thinks of the server as one on the internet, so that a test can take the line away.
class CycleFixture {
  public:
    explicit CycleFixture(int interval = 1000);
    ~CycleFixture();

    TestClock Time{0};  // nothing here happens outside this process
    QTemporaryDir Folder;
    TestPlatform System;
    RecordingDisplay Display;
    AnsweringBoxes Boxes;
    RecordingPage Page;
    FakeCamera Camera;
    ScriptedFtpServer Server{Time};
    MainState State;
    PictureState Picture{Folder.path()};
    Waiting Wait{Time};
    Connectivity Net{Wait, *System.Services.Online, *System.Services.Dial, Display, Page};
    FTP Ftp{Wait, Display};
    PicturePipeline Pictures{Picture, Camera, Wait, Boxes, Display};
    RunStatus Run{Time, Display};
    Texts Words{Texts::Language::English};
    FtpServer Way{{Wait, Display, [this] { return Net.Online(); }}, Ftp};
    UploadTransaction Transaction{{Wait, Net, Display, Boxes, State, Words, Run}, Way};
    UploadCycle Cycle{{Wait,
                       Net,
                       Transaction,
                       Pictures,
                       Display,
                       *System.Services.Sounds,
                       State,
                       Run,
                       Words,
                       {}}};

    // After values were changed: what LoadSettings does with them.
    void Apply();
    // From now on the pictures go into this folder below the fixture's.
    void GoLocal(const QString& folder);
    // Starts a run and waits for its first picture.
    [[nodiscard]] bool Begin() {
        Cycle.Start();
        return RunUntilPublished(1);
    }
    // Runs until that many pictures were published since the fixture was made.
    [[nodiscard]] bool RunUntilPublished(int count, qint64 limit = 600'000);
    [[nodiscard]] int Published() const { return published; }

  private:
    int published = 0;
};
