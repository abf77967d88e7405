#pragma once

#include "export/zel_commonframes_export.h"

#include <QObject>
#include <QVariant>
#include <QWidget>

#include <optional>

namespace Zel
{
/// The value of a labelled element, whether the user edited it, and the element's caption. The value is a
/// text in edits, masked edits and picture fields, a number in numeric fields, and the text of the chosen
/// line in drop-down lists.
///
/// When the caption is too long for its place, the editor moves to the right.
class ZEL_COMMONFRAMES_EXPORT ElementValue : public QObject
{
    Q_OBJECT
public:
    /// @p frame is the element, and owns this object. Throws Exception before Initialize and after Finalize.
    explicit ElementValue(QWidget *frame);
    ~ElementValue() override;

    /// Sets the two components; call it once. The caption is a label or a button, the editor an edit or a
    /// combo box.
    void Attach(QWidget *caption, QWidget *editor);
    /// Takes the current positions of the components as the designed ones, after a page changed them. With
    /// @p grows the editor is anchored to all four sides of the frame.
    void AdoptDesign(bool grows);

    /// The last valid value; an invalid variant when a list has no chosen line.
    QVariant Get_Value() const;
    /// Shows @p value, marks it as unedited and emits no signal. An invalid variant clears the choice of a
    /// list. Throws EConvertError, and changes nothing, when the editor does not accept @p value.
    void Set_Value(const QVariant &value);

    /// Whether the user has edited the value since the last Set_Value or MarkUnedited. Writing directly to
    /// the component does not count as an edit.
    bool IsEdited() const { return m_edited; }
    void MarkUnedited(); ///< Marks the value as unedited.

    QString Get_Caption() const; ///< The text of the caption component.
    /// Sets the caption. The editor moves to the right for a long caption. The caption also becomes the
    /// editor's accessible name, unless the page has set one.
    void Set_Caption(const QString &caption);

Q_SIGNALS:
    /// The user changed the entry, which may be incomplete or invalid.
    void Edited();
    /// The user finished an edit with a valid entry: left the editor, pressed Enter or chose a line.
    void Committed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void userEdited();
    void userFinished();
    void arrange();
    void nameEditor();

    QWidget *m_frame;
    QWidget *m_caption = nullptr;
    QWidget *m_editor = nullptr;
    QRect m_captionPlace;
    QRect m_editorPlace;
    QSize m_frameSize;
    int m_frameMinimum = 0;
    bool m_grows = false;
    bool m_edited = false;
    bool m_uncommitted = false;
    std::optional<int> m_choiceBefore; // the chosen line before the user's last key, click or wheel turn
};
} // namespace Zel
