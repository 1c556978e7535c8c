#pragma once

#include <QFont>
#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace brenvale {

/// What the views need of the desktop's look beside its palette. Follows the desktop while the program runs.
/// On main.
class Desktop final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY changed)
    Q_PROPERTY(qreal fontPixelSize READ fontPixelSize NOTIFY changed)
    Q_PROPERTY(QString fixedFontFamily READ fixedFontFamily NOTIFY changed)
    Q_PROPERTY(QString iconThemeName READ iconThemeName NOTIFY changed)
    Q_PROPERTY(bool isAnimated READ isAnimated NOTIFY changed)

public:
    explicit Desktop(QObject* parent = nullptr);

    [[nodiscard]] static QString fontFamily();

    /// The size of ordinary text, in device-independent pixels.
    [[nodiscard]] static qreal fontPixelSize();
    [[nodiscard]] static QString fixedFontFamily();
    [[nodiscard]] static QString iconThemeName();

    /// False where the desktop's user wants nothing to move.
    [[nodiscard]] static bool isAnimated();

    /// Of a line of text in `font`, whatever script it is in.
    Q_INVOKABLE static qreal lineHeight(const QFont& font);

    /// Tells assistive technology that the text of `item` changed.
    Q_INVOKABLE static void tellText(QQuickItem* item, const QString& before, const QString& after);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

    /// The user comes back to the program.
    void becameActive();
};

} // namespace brenvale
