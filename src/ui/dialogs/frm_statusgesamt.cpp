#include "ui/dialogs/frm_statusgesamt.h"

#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/access_of.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/run_record.h"
#include "core/run_state.h"
#include "core/schedule/schedule_texts.h"
#include "core/upload_cycle.h"
#include "core/upload_transaction.h"
#include "picture/picture_pipeline.h"
#include "platform/online_state.h"
#include "platform/platform.h"
#include "texts/texts.h"
#include "ui/dialogs/day_view.h"
#include "ui/settings/remedy.h"
#include "ui/tray/run_figures.h"
#include "ui/widgets/fitting_area.h"
#include "ui/widgets/screen_room.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int refreshMilliseconds = 1000;
constexpr int milliseconds = 1000;
constexpr QSize usualSize(600, 680);

QString RunningTimeText(qint64 time) {
    constexpr qint64 minute = 60;
    const qint64 seconds = time / milliseconds;
    const auto two = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    return two(seconds / minute / minute) + ":" + two(seconds / minute % minute) + ":" +
           two(seconds % minute);
}

}  // namespace

frmStatusgesamt::frmStatusgesamt(Program& ownProgram, const RunFigures& ownFigures, Texts& ownTexts)
    : Day(new DayView(ownTexts, this)),
      btnRemedy(new QPushButton(this)),
      txtLog(new QPlainTextEdit(this)),
      btnLog(new QPushButton(this)),
      btnClose(new QPushButton(this)),
      program(ownProgram),
      figures(ownFigures),
      texts(ownTexts),
      logCaption(new QLabel(this)),
      refresh(ownProgram.Wait.OwnClock(), refreshMilliseconds) {
    auto* all = new QVBoxLayout(this);
    auto* area = new FittingArea(this);
    auto* inside = new QWidget;
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins({});
    column->addWidget(Day);
    auto* grid = new QGridLayout;
    AddLines(*grid);
    column->addSpacing(column->spacing());
    column->addLayout(grid);
    column->addStretch(1);
    area->setWidget(inside);
    inside->installEventFilter(area);
    all->addWidget(area);
    all->addWidget(logCaption);
    all->addWidget(txtLog, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnLog);
    buttons->addStretch(1);
    buttons->addWidget(btnClose);
    all->addLayout(buttons);
    txtLog->setReadOnly(true);
    txtLog->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtLog->setTabChangesFocus(true);
    // It gives way where the figures need the room of the screen.
    constexpr int leastLines = 4;
    txtLog->setMinimumHeight(leastLines * txtLog->fontMetrics().lineSpacing());
    logCaption->setBuddy(txtLog);
    btnLog->setAutoDefault(true);
    btnClose->setAutoDefault(true);
    connect(btnLog, &QPushButton::clicked, this, &frmStatusgesamt::LogWanted);
    connect(btnClose, &QPushButton::clicked, this, &QWidget::hide);
    connect(btnRemedy, &QPushButton::clicked, this, &frmStatusgesamt::RemedyWanted);
    connect(&texts, &Texts::Changed, this, &frmStatusgesamt::ShowTexts);
    connect(&refresh, &Timer::Tick, this, &frmStatusgesamt::ShowFigures);
    connect(&program.Transaction, &UploadTransaction::LogChanged, this, &frmStatusgesamt::ShowLog);
    ShowTexts();
}

void frmStatusgesamt::AddLines(QGridLayout& grid) {
    for (const QString& key :
         {QString("State"), QString("Step"), QString("Made"), QString("Published"),
          QString("Megabytes"), QString("RunningTime"), QString("Interval"), QString("Hours"),
          QString("NextPicture"), QString("Connection"), QString("Server"), QString("Camera"),
          QString("PictureSize"), QString("Archive"), QString("LastError")}) {
        const Line line{key, new QLabel(this), new QLabel(this)};
        line.Value->setWordWrap(true);
        line.Value->setTextFormat(Qt::PlainText);  // some of it comes from the server
        line.Value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        const int row = grid.rowCount();
        grid.addWidget(line.Caption, row, 0, Qt::AlignTop);
        grid.addWidget(line.Value, row, 1);
        // Below the sentence, which needs the width.
        if (key == "State") grid.addWidget(btnRemedy, row + 1, 1, Qt::AlignLeft);
        lines << line;
    }
    btnRemedy->hide();
    grid.setColumnStretch(1, 1);
}

QString frmStatusgesamt::Text(const QString& key) const {
    return texts.Get("frmStatusgesamt", key);
}

void frmStatusgesamt::ShowTexts() {
    setWindowTitle(Text("Title"));
    for (const Line& line : lines) line.Caption->setText(Text(line.Key));
    Day->ShowTexts();
    logCaption->setText(Text("Log"));
    txtLog->setAccessibleName(Text("Log"));
    btnLog->setText(Text("ShowLog"));
    btnClose->setText(Text("Close"));
    ShowFigures();
}

void frmStatusgesamt::Show() {
    ShowFigures();  // some are long
    if (!isVisible()) FitToScreen();
    isMinimized() ? showNormal() : show();
    raise();
    activateWindow();
    btnClose->setFocus();
}

void frmStatusgesamt::FitToScreen() {
    // The layouts of a hidden window do not hear of what its labels say.
    for (QLayout* each : findChildren<QLayout*>()) each->invalidate();
    for (QWidget* each : findChildren<QWidget*>()) each->updateGeometry();
    resize(usualSize.expandedTo(sizeHint()).boundedTo(ScreenRoom(*this)));
}

void frmStatusgesamt::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh.SetEnabled(true);
    ShowFigures();
    ShowLog();
}

void frmStatusgesamt::hideEvent(QHideEvent* event) {
    refresh.SetEnabled(false);
    QWidget::hideEvent(event);
}

void frmStatusgesamt::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F11)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void frmStatusgesamt::Set(const QString& key, const QString& value) {
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&key](const Line& each) { return each.Key == key; });
    line->Value->setText(value);
    line->Value->setAccessibleName(line->Caption->text() + " " + value);
}

QString frmStatusgesamt::Value(const QString& key) const {
    for (const Line& line : lines)
        if (line.Key == key) return line.Value->text();
    return {};
}

QString frmStatusgesamt::Seconds(qint64 time) const {
    return Text("Seconds").arg(static_cast<double>(time) / milliseconds);
}

QString frmStatusgesamt::ServerText() const {
    const Settings& values = program.State.Values;
    if (values.LocalMode()) return Text("Local").arg(values.Verzeichnis);
    if (values.Server.isEmpty()) return Text("None");
    const ServerAccess access = AccessOf(values, program.ProgramFolder());
    // An address of the web has its port itself.
    const QString port =
        access.Server.contains("://") ? QString() : ":" + QString::number(access.Port);
    return access.Server + port + " " + access.Folder;
}

QString frmStatusgesamt::StateText() const {
    const QString state = RunFigures::StateText(texts, figures.State());
    const QString& why = program.Run.Reason();
    if (why.isEmpty()) return state;
    return Text("SinceAndWhy").arg(state, figures.TimeOf(program.Run.Since()), why);
}

QString frmStatusgesamt::ArchiveText() const {
    const Settings& values = program.State.Values;
    const auto& [trouble, sum] = program.Pictures.Archive().Now();
    if (!values.Archive || values.ArchivePath.isEmpty()) return Text("None");
    const QLocale& locale = program.PictureValues.Locale;
    const QString bytes =
        locale.formattedDataSize(sum.Bytes, 1, QLocale::DataSizeTraditionalFormat);
    switch (trouble) {
        case ArchiveTrouble::None:
            break;
        case ArchiveTrouble::Name:
            return Text("ArchiveName");
        case ArchiveTrouble::Full:
            return Text("ArchiveFull");
        case ArchiveTrouble::Folder:
            return Text("ArchiveFolder").arg(values.ArchivePath);
        case ArchiveTrouble::Silent:
            return Text("ArchiveSilent").arg(values.ArchivePath);
    }
    return Text("ArchiveKept").arg(locale.toString(sum.Pictures), bytes);
}

QString frmStatusgesamt::NextPictureText() const {
    const auto next = figures.UntilNextPicture();
    if (!next) return Text("None");
    if (figures.State() == RunState::WaitingToRetry) {
        const qint64 time = program.Wait.OwnClock().Milliseconds() + *next;
        return Text("NextTry").arg(figures.TimeOf(time));
    }
    if (figures.State() == RunState::OutsideHours) {
        const QDateTime now = program.Wait.OwnClock().Now();
        return Text("NextAt").arg(WhenText(texts, now, now.addMSecs(*next)));
    }
    if (*next == 0) return Text("Now");
    return Text("InSeconds").arg((*next + milliseconds - 1) / milliseconds);
}

QString frmStatusgesamt::HoursText() const {
    const Schedule& hours = program.Cycle.PublishingHours();
    const QDateTime now = program.Wait.OwnClock().Now();
    if (hours.Fault()) return FaultText(texts, hours);
    const bool open = hours.Open(now);
    const auto next = hours.NextChange(now);
    if (!next) return open ? Text("HoursAlways") : Text("HoursNever");
    return Text(open ? QString("HoursOpen") : "HoursClosed").arg(WhenText(texts, now, *next));
}

void frmStatusgesamt::ShowFigures() {
    const QString net =
        program.System().Online->Reachable() ? QString("NetOnline") : QString("NetOffline");
    const int width = program.ezVidCap1.Width();
    Day->Show(program.Record.Day(), program.Wait.OwnClock().Now());
    ShowRemedy();
    Set("State", StateText());
    Set("Step", figures.Status);
    Set("Made", QString::number(figures.Made()));
    Set("Published", QString::number(figures.Published()));
    Set("Megabytes", figures.Megabytes.section(u' ', 1));
    Set("RunningTime", RunningTimeText(figures.RunningTime()));
    Set("Interval", Seconds(program.State.Values.TotalInterval()));
    Set("Hours", HoursText());
    Set("NextPicture", NextPictureText());
    Set("Connection", texts.Get("States", net));
    Set("Server", ServerText());
    Set("Camera", program.DriverText());
    Set("PictureSize",
        width == 0 ? QString()
                   : QString::number(width) + " x " + QString::number(program.ezVidCap1.Height()));
    Set("Archive", ArchiveText());
    const QString error = figures.LastError();
    Set("LastError", error.isEmpty() ? Text("None") : error);
}

void frmStatusgesamt::ShowRemedy() {
    const auto remedy = Remedy::For(program.Run.Ongoing(), texts);
    btnRemedy->setVisible(remedy.has_value());
    if (!remedy) return;
    btnRemedy->setText(remedy->Opens);
    btnRemedy->setToolTip(remedy->Trouble);
    btnRemedy->setAccessibleName(remedy->Offer());
}

void frmStatusgesamt::ShowLog() {
    if (isVisible()) txtLog->setPlainText(program.Transaction.Log().Text());
}
