#include "ui/controls/numerickeypad.h"

#include "ui/style/theme.h"

#include <QGridLayout>
#include <QPushButton>

QString NumericKeypad::tap(const QString& text, const QString& key)
{
    if (key == backspaceKey())
        return text.isEmpty() ? text : text.chopped(1);
    if (key == QLatin1String(".")) {
        if (text.contains(QLatin1Char('.')))
            return text;
        return text.isEmpty() ? QStringLiteral("0.") : text + key;
    }
    if (text == QLatin1String("0"))
        return key;
    return text + key;
}

NumericKeypad::NumericKeypad(QWidget* parent)
    : QWidget(parent)
{
    const QStringList keys{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                           QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7"), QStringLiteral("8"),
                           QStringLiteral("9"), QStringLiteral("."), QStringLiteral("0"), backspaceKey()};
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (int index = 0; index < keys.size(); ++index) {
        const QString key = keys[index];
        auto* button = new QPushButton(key, this);
        Theme::setKind(button, "key");
        button->setFocusPolicy(Qt::NoFocus);
        if (key == backspaceKey()) {
            button->setAccessibleName(QStringLiteral("Backspace"));
            button->setAutoRepeat(true);
        }
        connect(button, &QPushButton::clicked, this, [this, key] {
            m_text = tap(m_text, key);
            Q_EMIT textEdited(m_text);
        });
        layout->addWidget(button, index / 3, index % 3);
    }
}
