#include "ui/controls/asktosavechanges.h"

#include <QMessageBox>
#include <QPushButton>

void askToSaveChanges(QWidget* parent, const QString& name, std::function<bool()> save,
                      std::function<void()> discard, std::function<void()> proceed)
{
    using Texts = SaveChangesTexts;
    auto* box = new QMessageBox(QMessageBox::Question, Texts::question(name), Texts::question(name),
                                QMessageBox::NoButton, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setInformativeText(Texts::note());
    QPushButton* saveButton = box->addButton(Texts::save(), QMessageBox::AcceptRole);
    QPushButton* discardButton = box->addButton(Texts::discard(), QMessageBox::DestructiveRole);
    QPushButton* cancel = box->addButton(Texts::cancel(), QMessageBox::RejectRole);
    box->setDefaultButton(saveButton);
    box->setEscapeButton(cancel);
    QObject::connect(box, &QMessageBox::buttonClicked, parent,
                     [=, save = std::move(save), discard = std::move(discard),
                      proceed = std::move(proceed)](QAbstractButton* button) {
                         if (button == saveButton) {
                             if (save())
                                 proceed();
                         } else if (button == discardButton) {
                             discard();
                             proceed();
                         }
                     });
    box->open();
}
