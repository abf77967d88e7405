#pragma once

#include "export/zel_toolkit_export.h"

#include <QAction>
#include <QLineEdit>
#include <QValidator>

/// What the entry fields with picture masks share: an entry that is wrong is shown black on red with a
/// warning picture, and the tool tip and the accessible description say what is wrong; keys and pasted texts
/// pass the same check, and what is refused at once is explained in a tip. The Insert key switches to
/// overwriting, with a block caret.
///
/// editingFinished comes only for an entry that is right.
class ZEL_TOOLKIT_EXPORT TOvcBaseField : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString pictureMask READ pictureMask WRITE setPictureMask)
public:
    explicit TOvcBaseField(QWidget *parent = nullptr);
    ~TOvcBaseField() override;

    QString pictureMask() const { return m_mask; } ///< What its signs mean is each field's own.
    void setPictureMask(const QString &mask);
    /// Whether the entry is shown as wrong.
    bool HasError() const { return !m_error.isEmpty(); }
    /// What is wrong with the entry, in words; empty when nothing is.
    QString ErrorText() const { return m_error; }
    bool IsOverwriting() const { return m_overwriting; } ///< Typing replaces; Insert switches it.

protected:
    /// What a field thinks of a text.
    struct Verdict {
        QValidator::State state = QValidator::Acceptable; ///< Acceptable, unfinished or wrong.
        QString problem;                                  ///< what is wrong, in words
        bool unfinished = false; ///< may become right by typing on: no error while the field has the focus
    };
    /// Judges a text. Invalid is refused at once; Intermediate is shown as an error.
    virtual Verdict Judge(const QString &text) const = 0;
    /// The mask has another value.
    virtual void MaskChanged() = 0;
    /// Judges the present text anew and shows the result.
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
