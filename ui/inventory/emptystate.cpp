#include "ui/inventory/emptystate.h"

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
    text->setMaximumWidth(420);
    auto* layout = new QVBoxLayout(page);
    layout->addStretch();
    layout->addWidget(heading, 0, Qt::AlignHCenter);
    layout->addWidget(text, 0, Qt::AlignHCenter);
    layout->addStretch();
    return page;
}
