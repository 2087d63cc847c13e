#include "ui/texts/toolkit_texts.h"

#include "ui/texts/texts.h"

#include <QCoreApplication>

namespace {

const QString section = "Toolkit";

// Others use the same words for other things.
bool IsShown(const QByteArray& context) {
    static const QByteArrayList contexts{"QColorDialog", "QFileDialog",    "QFileSystemModel",
                                         "QFontDialog",  "QPlatformTheme", "QDialogButtonBox"};
    return contexts.contains(context);
}

QString KeyOf(const QString& source) {
    QString key;
    for (const QChar letter : source)
        if (letter.isLetter()) key += letter;
    return key;
}

}  // namespace

ToolkitTexts::ToolkitTexts(const Texts& ownTexts, QObject* parent)
    : QTranslator(parent), texts(ownTexts) {
    QCoreApplication::installTranslator(this);
}

ToolkitTexts::~ToolkitTexts() {
    QCoreApplication::removeTranslator(this);
}

QString ToolkitTexts::translate(const char* context, const char* source, const char*, int) const {
    // English is the toolkit's own language, and more words of it are known there.
    if (texts.Current() == Texts::Language::English || !IsShown(context)) return {};
    const QString key = KeyOf(QString::fromUtf8(source));
    const QString text = texts.Get(section, key);
    return text == u'?' + section + u'.' + key ? QString() : text;
}
