#include "ui/controls/emptystate.h"

#include "ui/style/theme.h"

#include <QLabel>
#include <QVBoxLayout>

QWidget* makeEmptyState(const QString& title, const QString& note, QWidget* parent)
{
    auto* page = new QWidget(parent);
    auto* heading = Theme::label(title, Theme::Text::heading, page);
    auto* text = Theme::label(note, Theme::Text::subtitle, page);
    for (QLabel* label : {heading, text})
        label->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(page);
    // A third of the way down, where the eye lands.
    layout->addStretch(1);
    layout->addWidget(heading);
    layout->addWidget(text);
    layout->addStretch(2);
    return page;
}
