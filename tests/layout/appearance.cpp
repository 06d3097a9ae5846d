#include "tests/layout/appearance.h"

#include <memory>
#include <utility>
#include <vector>

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QTranslator>

namespace
{
struct Colours {
    QRgb window, text, base, alternate, button, highlight, highlighted, link, disabled, light, dark;
};

QPalette paletteOf(const Colours &c)
{
    QPalette palette(QColor(c.button), QColor(c.window));
    const std::pair<QPalette::ColorRole, QRgb> roles[] = {
        {QPalette::WindowText, c.text},
        {QPalette::Text, c.text},
        {QPalette::ButtonText, c.text},
        {QPalette::ToolTipText, c.text},
        {QPalette::BrightText, c.text},
        {QPalette::Base, c.base},
        {QPalette::AlternateBase, c.alternate},
        {QPalette::ToolTipBase, c.base},
        {QPalette::Highlight, c.highlight},
        {QPalette::HighlightedText, c.highlighted},
        {QPalette::Link, c.link},
        {QPalette::LinkVisited, c.link},
        {QPalette::PlaceholderText, c.disabled},
        {QPalette::Light, c.light},
        {QPalette::Midlight, c.light},
        {QPalette::Mid, c.dark},
        {QPalette::Dark, c.dark},
        {QPalette::Shadow, c.dark},
    };
    for (const auto &[role, colour] : roles)
        palette.setColor(role, QColor(colour));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(c.disabled));
    return palette;
}

QPalette paletteOf(const QString &theme)
{
    if (theme == QLatin1String("dark"))
        return paletteOf({0x2b2b2b, 0xeeeeee, 0x1e1e1e, 0x262626, 0x3a3a3a, 0x3584e4, 0xffffff, 0x78aeed,
                          0x8c8c8c, 0x4a4a4a, 0x161616});
    if (theme == QLatin1String("contrast"))
        return paletteOf({0x000000, 0xffffff, 0x000000, 0x000000, 0x000000, 0xffff00, 0x000000, 0xffff00,
                          0x00ff00, 0xffffff, 0xffffff});
    return QApplication::style()->standardPalette();
}

void installTranslation(const QString &translation, const QString &folder)
{
    static std::vector<std::unique_ptr<QTranslator>> installed;
    if (translation.isEmpty()) {
        installed.clear(); // removes all translations: each translator removes itself from the application
                           // when it is deleted
        return;
    }
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(translation, folder))
        return;
    QApplication::installTranslator(translator.get());
    installed.push_back(std::move(translator));
}
} // namespace

QString Appearance::description() const
{
    return QStringLiteral("%1 %2 %3 pt x%4")
        .arg(theme, language)
        .arg(points)
        .arg(qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")));
}

bool Appearance::canBeDrawn() const
{
    static const QHash<QString, QFontDatabase::WritingSystem> systems = {
        {"ar", QFontDatabase::Arabic},
        {"ja", QFontDatabase::Japanese},
        {"zh_CN", QFontDatabase::SimplifiedChinese}};
    return !systems.contains(language) || !QFontDatabase::families(systems.value(language)).isEmpty();
}

void apply(const Appearance &appearance)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(paletteOf(appearance.theme));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), appearance.points));

    installTranslation({}, {});
    QLocale::setDefault(QLocale(appearance.language));
    if (appearance.language == QLatin1String("en"))
        return;
    // As main() does it. Without Qt's translation files, Qt's own buttons stay English, as they do for users.
    installTranslation(QLatin1String("qt_") + appearance.language,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installTranslation(QLatin1String("zvinstall_") + appearance.language, QStringLiteral(ZV_TRANSLATIONS));
}
