#include "ui/navigation/editingscreen.h"

#include "ui/controls/asktosavechanges.h"

#include <QWidget>

bool EditingScreen::hasUnsavedEdits(QWidget* screen)
{
    const auto* editing = dynamic_cast<const EditingScreen*>(screen);
    return editing && editing->hasUnsavedEdits();
}

void EditingScreen::askToLeave(QWidget* screen, std::function<void()> proceed)
{
    if (auto* editing = dynamic_cast<EditingScreen*>(screen))
        editing->askToLeave(std::move(proceed));
    else
        proceed();
}

void FormScreen::askToLeave(std::function<void()> proceed)
{
    auto* screen = dynamic_cast<QWidget*>(this);
    Q_ASSERT(screen);
    askToSaveChanges(screen,
                     {hasUnsavedEdits(), [this] { return editedName(); }, [this] { return saveEdits(); },
                      [this] { discardEdits(); }},
                     std::move(proceed));
}

void FormScreen::openAfterAsking(const std::function<void()>& showEdited, std::function<void()> open)
{
    if (hasUnsavedEdits())
        showEdited();
    askToLeave(std::move(open));
}
