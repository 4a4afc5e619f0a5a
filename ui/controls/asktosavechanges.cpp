#include "ui/controls/asktosavechanges.h"

#include <QMessageBox>
#include <QPushButton>

void askToSaveChanges(QWidget* parent, UnsavedEdits edits, std::function<void()> proceed)
{
    if (!edits.any) {
        proceed();
        return;
    }
    using Texts = SaveChangesTexts;
    const QString question = Texts::question(edits.name());
    auto* box = new QMessageBox(QMessageBox::Question, question, question, QMessageBox::NoButton, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setInformativeText(Texts::note());
    QPushButton* saveButton = box->addButton(Texts::save(), QMessageBox::AcceptRole);
    QPushButton* discardButton = box->addButton(Texts::discard(), QMessageBox::DestructiveRole);
    QPushButton* cancel = box->addButton(Texts::cancel(), QMessageBox::RejectRole);
    box->setDefaultButton(saveButton);
    box->setEscapeButton(cancel);
    QObject::connect(box, &QMessageBox::buttonClicked, parent,
                     [=, edits = std::move(edits), proceed = std::move(proceed)](QAbstractButton* button) {
                         if (button == saveButton) {
                             if (edits.save())
                                 proceed();
                         } else if (button == discardButton) {
                             edits.discard();
                             proceed();
                         }
                     });
    box->open();
}
