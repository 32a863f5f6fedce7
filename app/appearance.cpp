#include "app/appearance.h"

#include "platform/system/settings_store.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include <algorithm>

namespace app {

namespace {

using Ground = Appearance::Ground;

constexpr Appearance rows[] = {
    {"mnulight", "light", Ground::Light},
    {"mnudark", "dark", Ground::Dark},
    {"mnudesktopcolours", "desktop", Ground::Desktop},
};

QString key() { return QStringLiteral("window/appearance"); }

struct Shade
{
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
    QRgb disabledLight; // 0 where being disabled changes nothing
    QRgb disabledDark;
};

constexpr Shade shades[] = {
    {QPalette::Window, 0xffefefef, 0xff2b2d30, 0, 0},
    {QPalette::WindowText, 0xff1c1c1e, 0xffe6e6e8, 0xff8a8d92, 0xff7d8087},
    {QPalette::Base, 0xffffffff, 0xff1e1f22, 0, 0},
    {QPalette::AlternateBase, 0xfff5f6f7, 0xff26282b, 0, 0},
    {QPalette::Text, 0xff1c1c1e, 0xffe6e6e8, 0xff8a8d92, 0xff7d8087},
    {QPalette::PlaceholderText, 0xff75787e, 0xff92959b, 0, 0},
    {QPalette::Button, 0xffefefef, 0xff36393d, 0, 0},
    {QPalette::ButtonText, 0xff1c1c1e, 0xffe6e6e8, 0xff8a8d92, 0xff7d8087},
    {QPalette::BrightText, 0xffffffff, 0xffffffff, 0, 0},
    {QPalette::ToolTipBase, 0xfffffbe6, 0xff3a3d42, 0, 0},
    {QPalette::ToolTipText, 0xff1c1c1e, 0xffe6e6e8, 0, 0},
    {QPalette::Highlight, 0xff2f7fc1, 0xff2f6fae, 0xffb5bac0, 0xff4a4e54},
    {QPalette::HighlightedText, 0xffffffff, 0xffffffff, 0, 0},
    {QPalette::Link, 0xff0b57d0, 0xff8ab4f8, 0, 0},
    {QPalette::LinkVisited, 0xff7a3ea8, 0xffc0a0e8, 0, 0},
    {QPalette::Light, 0xffffffff, 0xff46494e, 0, 0},
    {QPalette::Midlight, 0xfff7f7f7, 0xff3d4045, 0, 0},
    {QPalette::Mid, 0xffb8b8b8, 0xff26282b, 0, 0},
    {QPalette::Dark, 0xff9f9f9f, 0xff1a1b1d, 0, 0},
    {QPalette::Shadow, 0xff6f6f6f, 0xff0e0f10, 0, 0},
};

QPalette paletteOf(bool dark)
{
    QPalette palette;
    for (const Shade &shade : shades) {
        palette.setColor(shade.role, QColor::fromRgb(dark ? shade.dark : shade.light));
        if (const QRgb disabled = dark ? shade.disabledDark : shade.disabledLight; disabled != 0)
            palette.setColor(QPalette::Disabled, shade.role, QColor::fromRgb(disabled));
    }
    return palette;
}

} // namespace

std::span<const Appearance> appearances() { return rows; }

const Appearance &chosenAppearance(const settings::SettingsStore &settings)
{
    const QString word = settings.text(key());
    const auto *row = std::find_if(std::begin(rows), std::end(rows),
                                   [&](const Appearance &each) { return word == QLatin1String(each.word); });
    return row != std::end(rows) ? *row : rows[std::size(rows) - 1];
}

void putOn(const Appearance &appearance, settings::SettingsStore *settings)
{
    // A desktop's own style may paint with colours that no palette has.
    static const QString ofDesktop = QApplication::style()->name();
    const bool own = appearance.ground != Ground::Desktop;
    const QString style = own ? QStringLiteral("fusion") : ofDesktop;
    if (QApplication::style()->name() != style)
        QApplication::setStyle(style);
    QApplication::setPalette(own ? paletteOf(appearance.ground == Ground::Dark) : QPalette());
    if (settings != nullptr)
        settings->setText(key(), QLatin1String(appearance.word));
}

} // namespace app
