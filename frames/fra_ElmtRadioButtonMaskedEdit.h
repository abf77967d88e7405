#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/ElementValue.h"
#include "toolkit/TFrame.h"
#include "ui_fra_ElmtRadioButtonMaskedEdit.h"

/// One line of a page: a radio button as the caption and an edit whose input mask the page sets.
class ZEL_COMMONFRAMES_EXPORT TfraElmtRadioButtonMaskedEdit : public TFrame,
                                                              public Ui::TfraElmtRadioButtonMaskedEdit
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Get_Caption WRITE Set_Caption)
public:
    explicit TfraElmtRadioButtonMaskedEdit(QWidget *owner = nullptr);
    ~TfraElmtRadioButtonMaskedEdit() override;

    /// The text of the caption component. The editor moves to the right for a long caption.
    QString Get_Caption() const { return Value->Get_Caption(); }
    void Set_Caption(const QString &caption) { Value->Set_Caption(caption); }

    /// The element's value; never nil, a child of the frame.
    Zel::ElementValue *const Value;
};
