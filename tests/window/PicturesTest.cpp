#include "ShownWindow.h"

#include <QImage>
#include <QSet>

using namespace brenvale;

namespace {

struct PicturesTest : ShownWindow {
    /// How many colours there are in the part of the window where tabs are.
    [[nodiscard]] qsizetype coloursOfTab() {
        const auto picture = window.view()->grabWindow();
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 240; x < picture.width(); ++x) {
                colours.insert(picture.pixel(x, y));
            }
        }
        return colours.size();
    }
};

constexpr qsizetype coloursOfText = 16; ///< its edges have shades

} // namespace

TEST_F(PicturesTest, NoTabIsBlank) {
    for (int tab = Tab::settings; tab <= Tab::remote; ++tab) {
        show(static_cast<Tab::Number>(tab));
        EXPECT_GT(coloursOfTab(), coloursOfText) << "tab " << tab;
    }
}

TEST_F(PicturesTest, EveryControlHasAName) {
    store->addClipboard(QStringLiteral("one"));
    receive(R"({"app":"Chat","title":"Ann","body":"Lunch?"})");
    for (int tab = Tab::settings; tab <= Tab::remote; ++tab) {
        show(static_cast<Tab::Number>(tab));
        for (const auto role :
             {QAccessible::Button, QAccessible::CheckBox, QAccessible::EditableText, QAccessible::Link}) {
            EXPECT_FALSE(namesOf(role).contains(QString())) << "tab " << tab;
        }
    }
}
