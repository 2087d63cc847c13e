#include "app/film_command.h"

#include "core/film_settings.h"
#include "core/settings/load_settings.h"
#include "texts/texts.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <cstdio>

namespace {

// One line that is written over, as long as something changes in it.
class ProgressLine {
  public:
    void Show(int done, int total) {
        const int percent = total < 1 ? 0 : static_cast<int>(qint64{100} * done / total);
        if (!since.isValid()) since.start();
        if (percent == shown) return;
        shown = percent;
        const QString left = DurationText(TimeLeft(since.elapsed(), done, total));
        std::fprintf(stderr, "\r%3d %%, %s left ", percent, qPrintable(left));
        std::fflush(stderr);
    }
    void End() const {
        if (shown >= 0) std::fputc('\n', stderr);
    }

  private:
    QElapsedTimer since;
    int shown = -1;
};

}  // namespace

int MakeFilmOf(const FilmRange& range, const ProgramFolder& folder,
               const std::function<bool()>& cancelled) {
    const QString settings = SettingsFileIn(folder.Folder);
    FilmOrder order = FilmOrderOf(LoadSettings(settings), QLocale::system());
    order.Part.From = WallTimeOf(range.From);
    order.Part.To = WallTimeOf(range.To);
    const bool webm = range.File.endsWith(QStringLiteral(".webm"), Qt::CaseInsensitive);
    order.Format = webm ? FilmFormat::WebM : FilmFormat::Mp4;
    order.File = QFileInfo(range.File).absoluteFilePath();
    ProgressLine line;
    const FilmResult result =
        MakeFilm(order, {.Progress = [&line](int done, int total) { line.Show(done, total); },
                         .Cancelled = cancelled});
    line.End();
    const bool made = result.Fault == FilmFault::None;
    const Texts words(LanguageIn(settings).value_or(Texts::Language::English));
    const QString text = FilmText(words, order, result);
    std::fprintf(made ? stdout : stderr, "%s\n", qPrintable(text));
    return made ? 0 : 1;
}
