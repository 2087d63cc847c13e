#include "ui/texts/toolkit_texts.h"

#include "texts/texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>

ToolkitTexts::ToolkitTexts(const Texts& ownTexts) : texts(ownTexts) {
    connect(&texts, &Texts::Changed, this, &ToolkitTexts::Follow);
    Follow();
}

void ToolkitTexts::Follow() {
    QCoreApplication::removeTranslator(&translator);
    if (texts.Current() == Texts::Language::English) return;
    const QString name =
        texts.Current() == Texts::Language::German ? QString("qtbase_de") : "qtbase_fr";
    // Where the toolkit is installed, or where it lies beside the program.
    if (translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        translator.load(name, QCoreApplication::applicationDirPath() + "/translations"))
        QCoreApplication::installTranslator(&translator);
}
