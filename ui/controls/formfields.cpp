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
