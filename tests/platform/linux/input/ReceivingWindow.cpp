// A window with a text box that has the keyboard: "receiving-window FILE" writes what it holds, what keys and
// buttons came and where the pointer is to the file, a JSON object a line.
#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTimer>

namespace {

class Window final : public QPlainTextEdit {
public:
    explicit Window(const QString& path) : file_(path) {
        file_.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
        setWindowTitle(QStringLiteral("receiver"));
        setMouseTracking(true);
        viewport()->setMouseTracking(true);
        changes_.setSingleShot(true); // a long text is not written anew for each of its characters
        connect(this, &QPlainTextEdit::textChanged, &changes_, [this] { changes_.start(10); });
        connect(&changes_, &QTimer::timeout, this,
                [this] { write({{QStringLiteral("text"), toPlainText()}}); });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        writeKey(*event, true);
        QPlainTextEdit::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        writeKey(*event, false);
        QPlainTextEdit::keyReleaseEvent(event);
    }
    void mousePressEvent(QMouseEvent* event) override { writeButton(*event, true); }
    void mouseReleaseEvent(QMouseEvent* event) override { writeButton(*event, false); }
    void contextMenuEvent(QContextMenuEvent* /*event*/) override {}
    void focusInEvent(QFocusEvent* event) override {
        QPlainTextEdit::focusInEvent(event);
        write({{QStringLiteral("focus"), true}});
    }

private:
    void write(const QJsonObject& object) {
        file_.write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    }
    void writeKey(const QKeyEvent& event, bool isDown) {
        write({{QStringLiteral("key"), static_cast<qint64>(event.nativeVirtualKey())},
               {QStringLiteral("down"), isDown},
               {QStringLiteral("modifiers"), static_cast<qint64>(event.modifiers())}});
    }
    void writeButton(const QMouseEvent& event, bool isDown) {
        write({{QStringLiteral("button"), static_cast<qint64>(event.button())},
               {QStringLiteral("down"), isDown}});
    }

    QFile file_;
    QTimer changes_;
};

} // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    Window window(QApplication::arguments().value(1));
    window.resize(600, 400);
    window.show();
    return QApplication::exec();
}
