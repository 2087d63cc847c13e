#include "ui/film/frm_film.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "base/waiting.h"
#include "core/film_settings.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "film/film_encoder.h"
#include "picture/overlay/date_time_form.h"
#include "picture/picture_state.h"
#include "ui/settings/settings_rows.h"
#include "ui/widgets/file_chooser.h"

#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QStandardPaths>

namespace {

constexpr int restMilliseconds = 400;  // after the last change of the times

QHBoxLayout* Line(std::initializer_list<QWidget*> widgets, int stretched) {
    auto* line = new QHBoxLayout;
    int place = 0;
    for (QWidget* each : widgets) line->addWidget(each, place++ == stretched ? 1 : 0);
    return line;
}

}  // namespace

frmFilm::frmFilm(const Surroundings& surroundings, Opener opener, QWidget* parent)
    : SettingsWindow(surroundings, "frmFilm", parent),
      open(std::move(opener)),
      look(surroundings.Core.Wait.OwnClock(), restMilliseconds) {
    LayOut();
    Connect();
    Finish();
}

frmFilm::~frmFilm() {
    if (outdated) *outdated = true;
}

void frmFilm::LayOut() {
    Body().addWidget(PicturesFrame());
    Body().addWidget(FilmFrame());
    Body().addWidget(DayFrame());
    Body().addStretch(1);
}

QWidget* frmFilm::PicturesFrame() {
    QGroupBox* frame = Controls.Frame("FramePictures");
    auto* rows = new SettingsRows(Controls, frame);
    for (QDateTimeEdit* edit : {edtFrom, edtTo}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(ShortDateForm(Core().PictureValues.Locale) + " HH:mm:ss");
        edit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    rows->Add(edtFrom, {.Text = "From"});
    rows->Add(edtTo, {.Text = "To"});
    rows->Add(Every, "FilmEvery");
    rows->AddWhole(Strip);
    Controls.Add(Strip, {.Text = "Strip"});
    rows->AddWhole(Line({btnBegin, btnEnd, lblCount}, 2));
    const auto chosen = [this] { return Strip->Chosen().has_value(); };
    Controls.Add(btnBegin, {.Text = "BeginHere", .Enabled = chosen});
    Controls.Add(btnEnd, {.Text = "EndHere", .Enabled = chosen});
    for (QLabel* label : {lblCount, lblState}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    return frame;
}

QWidget* frmFilm::FilmFrame() {
    QGroupBox* frame = Controls.Frame("FrameFilm");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add<NumberBox>("FilmRate");
    rows->Add<QComboBox>({.Key = "FilmSize", .Items = static_cast<int>(FilmHeights.size())});
    const int formats = FilmEncoder::Offers(FilmFormat::WebM) ? 2 : 1;
    rows->Add(format, {.Key = "FilmFormat", .Items = formats});
    rows->Add<QCheckBox>("FilmStamp");
    rows->Add(txtFile, {.Text = "File"}, btnBrowse);
    Controls.Add(btnBrowse, {.Text = "Browse"});
    rows->AddWhole(Line({btnMake, Progress, btnCancel, btnShow}, 1));
    Controls.Add(btnMake, {.Text = "Make", .Enabled = [this] { return !work.Running(); }});
    Controls.Add(Progress, {.Text = "Progress"});
    Controls.Add(btnCancel, {.Text = "Cancel", .Enabled = [this] { return work.Running(); }});
    Controls.Add(btnShow, {.Text = "Show", .Enabled = [this] { return made; }});
    rows->AddWhole(lblState);
    return frame;
}

QWidget* frmFilm::DayFrame() {
    QGroupBox* frame = Controls.Frame("FrameDay");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add<QCheckBox>("DayFilm");
    rows->AddNote({.Text = "DayFilmNote"});
    return frame;
}

void frmFilm::Connect() {
    for (const QDateTimeEdit* edit : {edtFrom, edtTo})
        connect(edit, &QDateTimeEdit::dateTimeChanged, this, &frmFilm::LookSoon);
    connect(&look, &Timer::Tick, this, &frmFilm::Look);
    connect(&Controls, &Bindings::Edited, this, &frmFilm::ShowCount);
    connect(&Controls, &Bindings::Edited, this, &frmFilm::ShowFile);
    connect(Strip, &QListWidget::currentRowChanged, this, [this] { Controls.ApplyEnabled(); });
    connect(btnBegin, &QPushButton::clicked, this, [this] {
        if (const auto at = Strip->Chosen()) edtFrom->setDateTime(LocalTimeOf(*at));
    });
    connect(btnEnd, &QPushButton::clicked, this, [this] {
        constexpr WallTime second = 1000;
        if (const auto at = Strip->Chosen()) edtTo->setDateTime(LocalTimeOf(*at + second));
    });
    connect(btnBrowse, &QPushButton::clicked, this, &frmFilm::ChooseFile);
    connect(btnMake, &QPushButton::clicked, this, &frmFilm::Make);
    connect(btnCancel, &QPushButton::clicked, this, [this] { work.Cancel(); });
    connect(btnShow, &QPushButton::clicked, this,
            [this] { open(QUrl::fromLocalFile(QFileInfo(order.File).path())); });
    connect(&work, &FilmWork::Progressed, this, &frmFilm::ShowProgress);
    connect(&work, &FilmWork::Ended, this, &frmFilm::ShowResult);
}

void frmFilm::ShowSettings() {
    SettingsWindow::ShowSettings();
    const QDate today = Core().Wait.OwnClock().Now().date();
    // What was chosen since the program's start stays.
    if (!pictures && !outdated) {
        edtFrom->setDateTime(QDateTime(today, QTime(0, 0)));
        edtTo->setDateTime(QDateTime(today.addDays(1), QTime(0, 0)));
    }
    ShowFile();
    Look();
}

void frmFilm::ShowTexts() {
    ShowCount();
    SettingsWindow::ShowTexts();
}

Settings frmFilm::Wanted() const {
    return LoadSettings(SettingsFile(), Controls.Entries());
}

FilmOrder frmFilm::Order() const {
    FilmOrder wanted = FilmOrderOf(Wanted(), Core().PictureValues.Locale);
    wanted.Part.From = WallTimeOf(edtFrom->dateTime());
    wanted.Part.To = WallTimeOf(edtTo->dateTime());
    wanted.File = QDir::fromNativeSeparators(txtFile->text().trimmed());
    return wanted;
}

void frmFilm::LookSoon() {
    look.SetInterval(restMilliseconds);
    look.SetEnabled(true);
}

void frmFilm::Look() {
    look.SetEnabled(false);
    if (outdated) *outdated = true;
    outdated = std::make_shared<std::atomic<bool>>(false);
    pictures.reset();
    ShowCount();
    background.Run([this, part = Order().Part, over = outdated]() -> std::function<void()> {
        const auto found =
            std::make_shared<ArchiveListing>(ListArchive(part, [&over] { return over->load(); }));
        return [this, found] { ShowFound(*found); };
    });
}

void frmFilm::ShowFound(const ArchiveListing& found) {
    pictures = static_cast<qsizetype>(found.Pictures.size());
    noArchive = !found.Readable;
    Strip->ShowPictures(found.Pictures, Core().PictureValues.Locale);
    ShowCount();
    Controls.ApplyEnabled();
}

void frmFilm::ShowCount() {
    if (noArchive || !pictures) {
        lblCount->setText(Text(pictures ? QString("NoArchive") : QString("Looking")));
        return;
    }
    const Settings wanted = Wanted();
    const qsizetype count = ThinnedCount(*pictures, wanted.FilmEvery);
    lblCount->setText(Text("Count").arg(count).arg(DurationText(1000 * count / wanted.FilmRate)));
}

// The name follows the choices until somebody has typed another one.
void frmFilm::ShowFile() {
    const QString ending = format->currentIndex() == 1 ? QString(".webm") : QString(".mp4");
    if (txtFile->isModified()) return;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    const QString day = edtFrom->date().toString(Qt::ISODate);
    txtFile->setText(Paths::Native(folder + "/stillpost-" + day + ending));
}

void frmFilm::ChooseFile() {
    QFileDialog& chooser = OpenFileChooser(this, QFileDialog::AnyFile, Text("Browse"),
                                           QDir::fromNativeSeparators(txtFile->text()));
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    chooser.setOption(QFileDialog::DontConfirmOverwrite);  // asked when the film is made
    connect(&chooser, &QFileDialog::fileSelected, this, [this](const QString& file) {
        // As if it had been typed.
        txtFile->selectAll();
        txtFile->insert(Paths::Native(file));
    });
}

void frmFilm::Make() {
    if (work.Running()) return;
    const FilmOrder wanted = Order();
    if (wanted.File.isEmpty()) {
        Refuse(*txtFile, txtFile->toolTip());
        return;
    }
    const QString shown = Paths::Native(wanted.File);
    if (QFileInfo::exists(wanted.File) && !Boxes().AskYes("Stillpost", Text("Replace").arg(shown)))
        return;
    QList<ProfileEntry> chosen = Controls.Entries();
    chosen.removeIf([](const ProfileEntry& each) { return each.Key == "DayFilm"; });
    (void)Core().ChangeSettings(chosen);
    (void)QDir().mkpath(QFileInfo(wanted.File).path());
    order = wanted;
    made = false;
    began = Core().Wait.OwnClock().Milliseconds();
    lblState->clear();
    Progress->setRange(0, 0);  // until it is known how many pictures there are
    work.Start(order);
    Controls.ApplyEnabled();
}

void frmFilm::ShowProgress(int done, int total) {
    Progress->setRange(0, total);
    Progress->setValue(done);
    if (done == 0) return;
    const qint64 elapsed = Core().Wait.OwnClock().Milliseconds() - began;
    lblState->setText(Text("Left").arg(DurationText(TimeLeft(elapsed, done, total))));
}

void frmFilm::ShowResult(const FilmResult& result) {
    made = result.Fault == FilmFault::None;
    Progress->setRange(0, 1);
    Progress->setValue(made ? 1 : 0);
    lblState->setText(FilmText(Words(), order, result));
    Controls.ApplyEnabled();
}
