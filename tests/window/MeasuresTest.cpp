#include "TestWindow.h"

#include <QApplication>
#include <QPalette>
#include <QQuickItem>

#include <gmock/gmock.h>

#include <algorithm>

using namespace brenvale;

namespace {

/// What is given by number or by rule, measured from what the window draws.
struct Measures : testing::Test, TestWindow {
    ~Measures() override {
        QApplication::setPalette(QPalette());
        QApplication::setFont(font_);
    }

    static void use(const char* window, const char* base, const char* text, const char* highlight) {
        QPalette palette((QColor(text)), QColor(window));
        palette.setColor(QPalette::WindowText, QColor(text));
        palette.setColor(QPalette::Base, QColor(base));
        palette.setColor(QPalette::Highlight, QColor(highlight));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        QApplication::setPalette(palette);
    }

    static void useBreezeDark() { use("#2a2e32", "#1b1e20", "#fcfcfc", "#3daee9"); }

    void useText(double scale) {
        auto font = font_;
        font.setPixelSize(qRound(13 * scale));
        QApplication::setFont(font);
    }

    QQuickItem& first(const char* type) {
        const auto items = itemsOf(type);
        EXPECT_FALSE(items.isEmpty()) << type;
        return *items.value(0);
    }

    QSizeF sizeOf(const char* type) { return first(type).size(); }

    QQuickItem& named(QAccessible::Role role, const char* name) {
        return *item(role, QString::fromUtf8(name));
    }

    static double centre(const QQuickItem& item) { return item.mapToScene(QPointF(item.width() / 2, 0)).x(); }
    static double middle(const QQuickItem& item) {
        return item.mapToScene(QPointF(0, item.height() / 2)).y();
    }

    /// The texts that `item` draws, with their fonts.
    static QList<QQuickItem*> textsIn(const QQuickItem& item) {
        QList<QQuickItem*> texts;
        for (auto* child : item.childItems()) {
            if (child->inherits("QQuickText") && child->isVisible() &&
                !child->property("text").toString().isEmpty()) {
                texts.append(child);
            }
            texts += textsIn(*child);
        }
        return texts;
    }

    static QFont fontOf(const QQuickItem& text) { return text.property("font").value<QFont>(); }

    void fillCalls(const char* name) {
        reportCalls({{.number = QStringLiteral("12"), .name = QString::fromUtf8(name), .date = 1}});
    }

    void fillMessages(const char* body) {
        reportSms({{.address = QStringLiteral("12"), .body = QString::fromUtf8(body), .date = 1, .type = 2}});
    }

private:
    QFont font_ = QApplication::font();
};

double luminance(const QColor& colour) {
    return (0.2126 * colour.redF()) + (0.7152 * colour.greenF()) + (0.0722 * colour.blueF());
}

} // namespace

TEST_F(Measures, OfTheCallTab) {
    useText(1);
    show(Tab::call);
    type(QStringLiteral("1"));
    EXPECT_EQ(first("DialPad_QMLTYPE").width(), 320);
    EXPECT_EQ(sizeOf("DialKey_QMLTYPE"), QSizeF(70, 70));
    EXPECT_EQ(sizeOf("CallButton_QMLTYPE"), QSizeF(72, 72));
    const auto keys = itemsOf("DialKey_QMLTYPE");
    ASSERT_EQ(keys.size(), 12);
    EXPECT_EQ(keys[1]->x() - keys[0]->x(), 70 + 15);
    EXPECT_EQ(centre(first("CallButton_QMLTYPE")), centre(*keys[10])) << "on the axis of the 0";
    const auto texts = textsIn(*keys[1]);
    ASSERT_EQ(texts.size(), 2);
    EXPECT_EQ(fontOf(*texts[0]).pixelSize(), 28);
    EXPECT_EQ(fontOf(*texts[1]).pixelSize(), 8);
    EXPECT_EQ(fontOf(*texts[1]).weight(), QFont::Bold);
    const auto display = fontOf(*textsIn(named(QAccessible::EditableText, "Number")).first());
    EXPECT_EQ(display.pixelSize(), 38);
    EXPECT_EQ(display.weight(), QFont::Light);
}

TEST_F(Measures, OfTheSmsTab) {
    useText(1);
    fillMessages("Hi");
    view.sendSmsTab()->openConversation(QStringLiteral("12"));
    show(Tab::sms);
    EXPECT_EQ(first("ConversationPane_QMLTYPE").width(), 260);
    EXPECT_EQ(sizeOf("ContactAvatar_QMLTYPE"), QSizeF(36, 36));
    const auto texts = textsIn(first("MessageBubble_QMLTYPE"));
    ASSERT_FALSE(texts.isEmpty());
    EXPECT_EQ(fontOf(*texts.last()).pixelSize(), 8) << "the time";
}

TEST_F(Measures, OfTheRemoteTab) {
    show(Tab::remote);
    EXPECT_EQ(named(QAccessible::Button, "Up (↑)").size(), QSizeF(44, 36));
    EXPECT_EQ(named(QAccessible::Button, "Left (←)").size(), QSizeF(36, 44));
    EXPECT_EQ(named(QAccessible::Button, "Select / Enter (Space or Return)").size(), QSizeF(44, 44));
    EXPECT_GE(named(QAccessible::Button, "Back").width(), 130);
    EXPECT_EQ(middle(named(QAccessible::Button, "Volume up")), middle(named(QAccessible::Button, "Next")))
        << "on one axis";
}

TEST_F(Measures, TheTwoEmptyStatesOfSmsStandAtOneHeight) {
    show(Tab::sms);
    const auto states = itemsOf("EmptyState_QMLTYPE");
    ASSERT_EQ(states.size(), 2);
    EXPECT_EQ(middle(*states[0]), middle(*states[1]));
}

TEST_F(Measures, LargeTextStaysInTheKeysAndCircles) {
    useText(1.5);
    fillCalls("Ann");
    fillMessages("Hi");
    show(Tab::call);
    for (const auto* key : itemsOf("DialKey_QMLTYPE")) {
        for (const auto* text : textsIn(*key)) {
            const auto box = text->mapRectToItem(key, QRectF(0, 0, text->width(), text->height()));
            EXPECT_LE(QLineF(box.center(), QPointF(35, 35)).length(), 35)
                << text->property("text").toString().toStdString();
            EXPECT_GE(box.left(), 0);
            EXPECT_LE(box.right(), 70);
            EXPECT_LE(box.bottom(), 70);
        }
    }
    show(Tab::sms);
    const auto& avatar = first("ContactAvatar_QMLTYPE");
    EXPECT_LT(textsIn(avatar).first()->width(), avatar.width());
}

TEST_F(Measures, IconsGrowWithTheText) {
    useText(1);
    show(Tab::info);
    const auto before = sizeOf("Symbol_QMLTYPE");
    useText(2);
    settle();
    EXPECT_EQ(sizeOf("Symbol_QMLTYPE"), before * 2);
}

TEST_F(Measures, ARowIsAsHighWithAnyName) {
    show(Tab::call);
    const auto heightWith = [this](const char* name) {
        fillCalls(name);
        settle();
        return sizeOf("CallRow_QMLTYPE").height();
    };
    const auto height = heightWith("Ann");
    EXPECT_EQ(heightWith("ليلى مرحبا"), height);
    EXPECT_EQ(heightWith("😀"), height);
    EXPECT_EQ(heightWith("Ann\nLee\nof\nmany\nlines"), height);
    EXPECT_EQ(heightWith("Ann\u2028Lee\u2029\x0b\x0cof"), height);
}

TEST_F(Measures, OneLineIsOneLineEverywhere) {
    const auto name = QStringLiteral("Ann\nLee\nof\nmany\nlines");
    receive(R"({"app":"a\nb\nc\nd","title":"e\nf\ng\nh","body":"x"})");
    FileTransferRecord file;
    file.id = QUuid::createUuid();
    file.fileName = name;
    store->addFileTransfer(file);
    reportSms({{.address = QStringLiteral("12"), .name = name, .body = QStringLiteral("Hi"), .date = 1}});
    view.sendSmsTab()->openConversation(QStringLiteral("12"));
    store->connectedRemoteIP.set(QStringLiteral("1.2.3.4"));
    store->connectedDeviceName.set(name);
    for (const auto& [tab, row] :
         {std::pair{Tab::notifications, "NotificationRow_QMLTYPE"},
          std::pair{Tab::fileDrop, "FileTransferRow_QMLTYPE"}, std::pair{Tab::sms, "ConversationRow_QMLTYPE"},
          std::pair{Tab::sms, "ThreadHeader_QMLTYPE"},
          std::pair{Tab::settings, "ConnectionStatus_QMLTYPE"}}) {
        show(tab);
        EXPECT_LT(sizeOf(row).height(), 90) << row;
        EXPECT_GT(sizeOf(row).height(), 10) << row;
    }
}

TEST_F(Measures, ATransferIsAsHighBeforeAsAfterItIsDone) {
    FileTransferRecord file;
    file.id = QUuid::createUuid();
    file.fileName = QStringLiteral("a.jpg");
    file.progress = 0.5;
    store->addFileTransfer(file);
    show(Tab::fileDrop);
    const auto height = sizeOf("FileTransferRow_QMLTYPE").height();
    store->updateFileTransfer(file.id, 1, true, QUrl::fromLocalFile(QStringLiteral("/tmp/a.jpg")));
    settle();
    EXPECT_EQ(sizeOf("FileTransferRow_QMLTYPE").height(), height);
}

TEST_F(Measures, NothingIsAHoleInADarkWindow) {
    useBreezeDark();
    show(Tab::settings);
    const auto window = QApplication::palette().color(QPalette::Window);
    const auto picture = quickView().grabWindow();
    const auto& card = first("SectionRow_QMLTYPE");
    const auto place = card.mapToScene(QPointF(card.width() / 3, 3)).toPoint();
    EXPECT_GT(luminance(picture.pixelColor(place)), luminance(window));
}

TEST_F(Measures, ASelectedTabIsTintedAndKeepsItsText) {
    useBreezeDark();
    show(Tab::info);
    for (const auto* row : itemsOf("SidebarRow_QMLTYPE")) {
        EXPECT_EQ(textsIn(*row).first()->property("color").value<QColor>(), QColor("#fcfcfc"));
    }
}

TEST_F(Measures, AProminentButtonKeepsTheDesktopsTextAndCanBeRead) {
    use("#eff0f1", "#ffffff", "#232629", "#3daee9");
    show(Tab::fileDrop);
    const auto& button = named(QAccessible::Button, "Send Files...");
    EXPECT_EQ(textsIn(button).first()->property("color").value<QColor>(), QColor(Qt::white));
    const auto picture = quickView().grabWindow();
    const auto fill = picture.pixelColor(button.mapToScene(QPointF(8, button.height() / 2)).toPoint());
    EXPECT_LT(luminance(fill), luminance(QColor("#3daee9"))) << "deepened";
    EXPECT_NEAR(fill.hueF(), QColor("#3daee9").hueF(), 0.03);
}

TEST_F(Measures, AvatarsAreSmooth) {
    use("#eff0f1", "#ffffff", "#232629", "#3daee9");
    fillMessages("Hi");
    show(Tab::sms);
    const auto& avatar = first("ContactAvatar_QMLTYPE");
    const auto corner = avatar.mapToScene(QPointF()).toPoint();
    const auto picture = quickView().grabWindow();
    QSet<QRgb> shades;
    for (int place = 0; place < 12; ++place) { // along the edge at the top left
        shades.insert(picture.pixel(corner + QPoint(place, 11 - place)));
    }
    EXPECT_GT(shades.size(), 2) << "the edge has shades between the circle and what is behind it";
}
