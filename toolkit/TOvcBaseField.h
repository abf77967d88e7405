#pragma once

#include "export/zel_toolkit_export.h"

#include <QAction>
#include <QLineEdit>
#include <QValidator>

/// The base of the entry fields with picture masks. An invalid entry is shown black on red with a warning
/// picture; the tool tip and the accessible description give the reason. The field checks typed and pasted
/// texts alike, and a tip explains a text that is refused at once. The Insert key switches to overwriting,
/// with a block caret.
///
/// editingFinished is emitted only for a valid entry.
class ZEL_TOOLKIT_EXPORT TOvcBaseField : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString pictureMask READ pictureMask WRITE setPictureMask)
public:
    explicit TOvcBaseField(QWidget *parent = nullptr);
    ~TOvcBaseField() override;

    QString pictureMask() const { return m_mask; } ///< Each derived class defines the meaning of the mask.
    void setPictureMask(const QString &mask);
    /// Whether the entry is shown as invalid.
    bool HasError() const { return !m_error.isEmpty(); }
    /// The reason why the entry is invalid; empty for a valid entry.
    QString ErrorText() const { return m_error; }
    bool IsOverwriting() const { return m_overwriting; } ///< The Insert key toggles it.

protected:
    /// The result of checking a text.
    struct Verdict {
        QValidator::State state = QValidator::Acceptable; ///< Invalid: refused. Intermediate: an error.
        QString problem;                                  ///< the reason, empty for Acceptable
        bool unfinished = false; ///< further typing can make the text valid: no error shown while focused
    };
    /// Checks a text.
    virtual Verdict Judge(const QString &text) const = 0;
    /// Called when the mask has changed.
    virtual void MaskChanged() = 0;
    /// Checks the current text again and shows the result.
    void Recheck();

    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Check;
    friend class Check;
    void showError(const QString &problem);
    void applyColours();
    void explainRefusal();

    Check *m_check;
    QAction *m_warning;
    QString m_mask;
    QString m_error;
    QString m_hint;
    bool m_overwriting = false;
    bool m_colouring = false;
};
