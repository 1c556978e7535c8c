#include "messages/ContactsManager.h"

#include <gtest/gtest.h>

#include <thread>

using namespace brenvale;

TEST(ContactsManager, ThereIsOne) {
    const ContactsManager* other = nullptr;
    std::thread([&other] { other = &ContactsManager::shared(); }).join();
    EXPECT_EQ(&ContactsManager::shared(), other);
    EXPECT_TRUE(ContactsManager::shared().nameCache.isEmpty());
}

TEST(ContactsManager, AccessIsRefusedOnceAndAtOnce) {
    for (const bool showDeniedAlert : {false, true}) {
        QList<bool> answers;
        ContactsManager::shared().requestAccess(showDeniedAlert,
                                                [&answers](bool isGranted) { answers.append(isGranted); });
        EXPECT_EQ(answers, QList<bool>{false});
    }
}

TEST(ContactsManager, AccessCanBeAskedForWithoutWaitingForTheAnswer) {
    ContactsManager::shared().requestAccess();
    ContactsManager::shared().requestAccess(true);
}

TEST(ContactsManager, NoNameIsFoundEvenWhereTheCacheHasOne) {
    auto& contacts = ContactsManager::shared();
    contacts.nameCache.insert(QStringLiteral("123"), QStringLiteral("Ann"));
    EXPECT_EQ(contacts.cachedName(QStringLiteral("123")), std::nullopt);
    EXPECT_EQ(contacts.cachedName(QString()), std::nullopt);
    contacts.nameCache.clear();
}

TEST(ContactsManager, ASearchFindsNothing) {
    auto& contacts = ContactsManager::shared();
    contacts.nameCache.insert(QStringLiteral("123"), QStringLiteral("Ann"));
    EXPECT_TRUE(contacts.search(QStringLiteral("Ann")).isEmpty());
    EXPECT_TRUE(contacts.search(QString()).isEmpty());
    contacts.nameCache.clear();
}

TEST(ContactsManager, DigitsOfANumberStayInOrder) {
    const auto digitsOnly = ContactsManager::digitsOnly;
    EXPECT_EQ(digitsOnly(QStringLiteral("+49 (170) 123-45.67")), QStringLiteral("491701234567"));
    EXPECT_EQ(digitsOnly(QString()), QString());
    EXPECT_EQ(digitsOnly(QStringLiteral("no digit")), QString());
    EXPECT_EQ(digitsOnly(QString(100, u'7')), QString(100, u'7'));
}

TEST(ContactsManager, DigitsOfOtherScriptsStayAsTheyAre) {
    EXPECT_EQ(ContactsManager::digitsOnly(QStringLiteral("a٣-४½²Ⅷ")), QStringLiteral("٣४"));
}

TEST(ContactMatch, EachHasAnIdentityOfItsOwn) {
    const ContactMatch first{QStringLiteral("Ann"), QStringLiteral("0170 1"), QStringLiteral("+491701")};
    const ContactMatch second{QStringLiteral("Ann"), QStringLiteral("0170 1"), QStringLiteral("+491701")};
    EXPECT_FALSE(first.id.isNull());
    EXPECT_NE(first.id, second.id);
    EXPECT_EQ(first.name, QStringLiteral("Ann"));
    EXPECT_EQ(first.phone, QStringLiteral("0170 1"));
    EXPECT_EQ(first.phoneRaw, QStringLiteral("+491701"));
}
