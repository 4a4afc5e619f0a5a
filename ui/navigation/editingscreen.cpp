#include "ui/navigation/editingscreen.h"

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
