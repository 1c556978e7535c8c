#include "messages/DialerKeyHandler.h"

#include "messages/Characters.h"

namespace brenvale {

bool DialerKeyHandler::handle(int key, const QString& characters) {
    if (isCallActive) {
        return false;
    }
    if (!characters.isEmpty() && QStringView(u"0123456789*#").contains(characters)) {
        dialpadNumber += characters;
        return true;
    }
    switch (key) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        dialpadNumber = withoutLastCharacter(dialpadNumber);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        onReturn();
        return true;
    default:
        return false;
    }
}

} // namespace brenvale
