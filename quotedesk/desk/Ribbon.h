#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace QuoteDesk
{

/// A named group of a ribbon with a button per action.
class RibbonGroup : public QWidget
{
    Q_OBJECT
public:
    explicit RibbonGroup(QWidget *parent = nullptr);
    ~RibbonGroup() override;

    QString title() const;
    void setTitle(const QString &title);
    /// Sets the actions in order; they are not owned. A separator makes a line, an invisible action has no
    /// button, and a group without buttons is hidden.
    void setActions(const QList<QAction *> &actions);
    /// The button of an action; nullptr when it has none.
    QToolButton *buttonOf(const QAction *action) const;

    /// Shows captions below the pictures, or only the pictures.
    void setCaptionsShown(bool shown);
    /// The width with or without captions. Only measures: it changes nothing and requests no layout.
    int widthWithCaptions(bool shown) const;

private:
    class Button;
    static Qt::ToolButtonStyle styleOf(const QToolButton &button, bool captions);

    QHBoxLayout *m_buttons;
    QLabel *m_title;
    QList<QAction *> m_actions; ///< for comparison only
    QList<Button *> m_buttonList;
    bool m_captions = true;
};

/// The band of groups above the main window's pages. Without enough space it shows only the pictures, whose
/// tooltips have the captions.
class Ribbon : public QWidget
{
    Q_OBJECT
public:
    explicit Ribbon(QWidget *parent = nullptr);
    ~Ribbon() override;

    /// Appends an empty group, which the ribbon owns.
    RibbonGroup *addGroup(const QString &name);
    QList<RibbonGroup *> groups() const { return m_groups; }
    QToolButton *buttonOf(const QAction *action) const;
    /// Decides again whether there is space for captions; called when the groups have changed.
    void arrange();

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int widthOfGroups(bool captions) const;

    QHBoxLayout *m_layout;
    QList<RibbonGroup *> m_groups;
};

} // namespace QuoteDesk
