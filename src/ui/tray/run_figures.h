#pragma once

#include "core/run_state.h"
#include "ui/status/status_memory.h"

#include <QObject>

#include <optional>

class Program;
class Texts;

// The figures of the run for windows that show them as a whole: gathered from what the program
// shows and announces, asked for by the overview and the tray icon.
class RunFigures : public QObject, public StatusMemory {
    Q_OBJECT

  public:
    // The program outlives the figures.
    explicit RunFigures(Program& ownProgram);
    ~RunFigures() override;

    [[nodiscard]] RunState State() const;
    // "running" and so on in the language in use: of a run the steps are not told apart.
    [[nodiscard]] static QString StateText(const Texts& texts, RunState state);
    // Pictures made, and those of them that visitors have seen, since the program started.
    [[nodiscard]] int Made() const;
    [[nodiscard]] int Published() const { return published; }
    // The camera's trouble, else why the last try since the program started has failed, and when
    // that began; empty when nothing has failed.
    [[nodiscard]] QString LastError() const;
    // The time of day at a time of the clock (milliseconds), with the date where that is not today.
    [[nodiscard]] QString TimeOf(qint64 milliseconds) const;
    // Milliseconds until the next picture or the next try, 0 while one is being published; nothing
    // while none is to come.
    [[nodiscard]] std::optional<qint64> UntilNextPicture() const;

    void ShowOnline(bool online) override;
    void ShowPictureCount(const QString& text) override;
    void ResetRunningTime() override;

  signals:
    // State, online state or the number of published pictures may have changed.
    void Changed();

  private:
    void Note();
    [[nodiscard]] std::optional<qint64> UntilHoursBegin() const;

    Program& program;
    QString lastError;
    int published = 0;
    qint64 lastPicture;  // when one was made or the run began, clock milliseconds
};
