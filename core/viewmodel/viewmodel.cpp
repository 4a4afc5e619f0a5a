#include "viewmodel/viewmodel.h"

void ViewModel::setErrorMessage(const std::optional<QString>& message)
{
    if (message == m_errorMessage)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

