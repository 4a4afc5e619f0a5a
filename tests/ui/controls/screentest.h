#pragma once

#include "ui/navigation/mainnavigationview.h"
#include "ui/windowtest.h"

#include <QLabel>
#include <QListWidget>
#include <QAbstractButton>
#include <QMessageBox>
#include <QTableWidget>

// The texts a person can see in `widget`, in no particular order.
inline QStringList visibleTexts(const QWidget* widget)
{
    QStringList texts;
    for (const QLabel* label : widget->findChildren<QLabel*>())
        if (label->isVisibleTo(widget) && !label->text().isEmpty())
            texts << label->text();
    return texts;
}

// A row of a table as shown, "" for an empty cell.
inline QStringList rowTexts(const QTableWidget& table, int row)
{
    QStringList texts;
    for (int column = 0; column < table.columnCount(); ++column)
        texts << (table.item(row, column) ? table.item(row, column)->text() : QString());
    return texts;
}

// Presses the button so named in the message box open over `over`, as the person would.
inline void answer(QWidget* over, const QString& button)
{
    auto* box = over->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr) << "no question was asked";
    for (QAbstractButton* choice : box->buttons())
        if (choice->text() == button)
            choice->click();
}

// A section of the main window, reached through the sidebar by someone signed in.
class ScreenTest : public WindowTest {
protected:
    void signIn(UserRole role = UserRole::cashier)
    {
        user = addUser(store.context(), {.username = QStringLiteral("esi"), .role = role, .name = "Esi"});
        openWindow();
        session.setCurrentUser(user);
    }

    // Chosen in the sidebar as a click would; the sidebar must offer it to this user.
    template <class Screen> Screen& goTo(const QString& title)
    {
        auto* navigation = screen<MainNavigationView>();
        EXPECT_NE(navigation, nullptr);
        const QList<QListWidgetItem*> items = navigation->sidebar()->findItems(title, Qt::MatchExactly);
        EXPECT_EQ(items.size(), 1) << title.toStdString();
        navigation->sidebar()->setCurrentItem(items.value(0));
        auto* shown = qobject_cast<Screen*>(navigation->currentScreen());
        EXPECT_NE(shown, nullptr) << title.toStdString();
        return *shown;
    }

    Ref<User> user;
};
