#include "ui/controls/errorlabel.h"

#include "ui/style/theme.h"

ErrorLabel::ErrorLabel(QWidget* parent)
    : QLabel(parent)
{
    Theme::setKind(this, "error");
    setWordWrap(true);
    // Read out by screen readers as it appears.
    setAccessibleName(QStringLiteral("Error"));
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void ErrorLabel::setMessage(const std::optional<QString>& message)
{
    setText(message.value_or(QString()));
    setVisible(message.has_value() && !message->isEmpty());
}
