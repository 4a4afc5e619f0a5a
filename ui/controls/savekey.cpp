#include "ui/controls/savekey.h"

#include <QAbstractButton>
#include <QShortcut>

void SaveKey::attach(QAbstractButton* save)
{
    auto* shortcut = new QShortcut(QKeySequence::Save, save);
    QObject::connect(shortcut, &QShortcut::activated, save, &QAbstractButton::animateClick);
    save->setToolTip(QStringLiteral("Ctrl+S"));
}
