#pragma once

#include "ui/navigation/mainnavigationview.h"
#include "ui/windowtest.h"

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
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

// A row of a table over a model, as shown.
inline QStringList rowTexts(const QTableView& table, int row)
{
    QStringList texts;
    for (int column = 0; column < table.model()->columnCount(); ++column)
        texts << table.model()->index(row, column).data().toString();
    return texts;
}

// The message box open over `widget`, once those answered before are gone.
inline QMessageBox* openBox(const QWidget* widget)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return widget->findChild<QMessageBox*>();
}

// Clicks the box's button of that title, as a person would.
inline void clickButton(QMessageBox* box, const QString& title)
{
    ASSERT_NE(box, nullptr);
    for (QAbstractButton* button : box->buttons()) {
        if (button->text() == title) {
            button->click();
            return;
        }
    }
    ADD_FAILURE() << "no button " << title.toStdString();
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
