#include "ui/controls/formfields.h"

#include <QBoxLayout>
#include <QLabel>

QLabel* addLabelledField(QBoxLayout* layout, const QString& label, QWidget* field)
{
    auto* caption = new QLabel(label);
    caption->setBuddy(field);
    field->setAccessibleName(label);
    auto* pair = new QVBoxLayout;
    pair->setSpacing(4);
    pair->addWidget(caption);
    pair->addWidget(field);
    layout->addLayout(pair);
    return caption;
}

QLineEdit* makeSearchField(const QString& prompt, QWidget* parent)
{
    auto* search = new QLineEdit(parent);
    search->setPlaceholderText(prompt);
    search->setAccessibleName(prompt);
    search->setClearButtonEnabled(true);
    return search;
}
