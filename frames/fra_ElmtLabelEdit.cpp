#include "frames/fra_ElmtLabelEdit.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelEdit::TfraElmtLabelEdit(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, edValue);
}

TfraElmtLabelEdit::~TfraElmtLabelEdit() = default;
