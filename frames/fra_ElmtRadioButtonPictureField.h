#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/ElementValue.h"
#include "toolkit/TFrame.h"
#include "ui_fra_ElmtRadioButtonPictureField.h"

/// One line of a page: a radio button as the caption and a field for texts of at most fifteen characters.
class ZEL_COMMONFRAMES_EXPORT TfraElmtRadioButtonPictureField : public TFrame,
                                                                public Ui::TfraElmtRadioButtonPictureField
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Get_Caption WRITE Set_Caption)
public:
    explicit TfraElmtRadioButtonPictureField(QWidget *owner = nullptr);
    ~TfraElmtRadioButtonPictureField() override;

    /// The text of the caption component. The editor moves to the right for a long caption.
    QString Get_Caption() const { return Value->Get_Caption(); }
    void Set_Caption(const QString &caption) { Value->Set_Caption(caption); }

    /// The element's value; never nil, a child of the frame.
    Zel::ElementValue *const Value;
};
