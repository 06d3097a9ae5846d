#include "tests/packaging/tsfile.h"

#include <QFile>
#include <QXmlStreamReader>

namespace
{
TsText readText(QXmlStreamReader &xml, const QString &context)
{
    TsText text;
    text.context = context;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            text.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            text.comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            text.state = xml.attributes().value(QLatin1String("type")).toString();
            text.translation = xml.readElementText();
        } else {
            xml.skipCurrentElement();
        }
    }
    return text;
}

QList<TsText> readContext(QXmlStreamReader &xml)
{
    QList<TsText> texts;
    QString context;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("message"))
            texts += readText(xml, context);
        else
            xml.skipCurrentElement();
    }
    return texts;
}
} // namespace

QString TsFile::translation(const QString &context, const QString &source) const
{
    for (const TsText &text : texts) {
        if (text.context == context && text.source == source)
            return text.translation;
    }
    return {};
}

TsFile readTsFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    TsFile ts;
    if (xml.readNextStartElement()) {
        ts.language = xml.attributes().value(QLatin1String("language")).toString();
        ts.sourceLanguage = xml.attributes().value(QLatin1String("sourcelanguage")).toString();
    }
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("context"))
            ts.texts += readContext(xml);
        else
            xml.skipCurrentElement();
    }
    return xml.hasError() ? TsFile() : ts;
}
