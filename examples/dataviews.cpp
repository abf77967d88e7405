// A fund catalogue as a list, a combo box and a tree, each filled from its datasets in one call. F5 reads the
// file again and keeps the chosen and expanded rows. The first argument is a CSV catalogue, plain or packed
// with gzip; without it the program shows the full catalogue beside the project, or else a small one. With a
// folder as the second argument the program saves screenshots of the pages there; with "dark" as the third,
// in dark colours.
#include "examples/CatalogueCsv.h"

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"
#include "dataviews/fra_TreeView.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"
#include "toolkit/TScreen.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cstdio>

namespace
{
QString s(const char *text)
{
    return QString::fromLatin1(text);
}

enum Picture { TypePicture, GroupPicture, FundPicture };

/// The catalogue with three providers that read the file again for each request.
class Catalogue
{
public:
    explicit Catalogue(QString path) : m_path(std::move(path))
    {
        Provide(s("types"), {0, 1}, 0);
        Provide(s("groups"), {0, 2, 3}, 2);
        Provide(s("funds"), {2, 4, 5, 3, 1}, 4);
    }
    /// Opens @p dataSet on the rows of a provider.
    void Open(TClientDataSet &dataSet, const char *provider)
    {
        dataSet.SetRemoteServer(&m_connection);
        dataSet.SetProviderName(s(provider));
        dataSet.Open();
    }

private:
    /// A provider of some columns with a row for each new value of the column @p key.
    void Provide(const QString &name, const QList<int> &columns, int key)
    {
        m_connection.RegisterProvider(name, [this, columns, key](const TParams &) {
            static const QStringList names{s("GroupTypeID"),   s("GroupTypeDesc"), s("FundGroupID"),
                                           s("FundGroupName"), s("FundID"),        s("FundName")};
            QList<TFieldDef> fields;
            for (const int column : columns)
                fields.append({names.at(column), column % 2 == 0 ? TFieldType::Integer : TFieldType::String});
            TTableBuilder table(fields);
            QString last;
            const QList<QStringList> rows = Rows();
            for (const QStringList &row : rows) {
                if (row.at(key) == last)
                    continue;
                last = row.at(key);
                for (const int column : columns)
                    table.Append(row.at(column));
                table.EndRow();
            }
            return TDataPacket(table.Finish());
        });
    }
    QList<QStringList> Rows() const
    {
        if (!m_path.isEmpty())
            return CatalogueCsv::read(m_path);
        QList<QStringList> rows;
        for (int fund = 0; fund < 24; ++fund)
            rows.append({QString::number(fund / 12), s("Type %1").arg(fund / 12), QString::number(fund / 4),
                         s("Group %1").arg(fund / 4), QString::number(100 + fund), s("Fund %1").arg(fund)});
        return rows;
    }

    QString m_path;
    TLocalConnection m_connection;
};

/// Runs @p fill and reports its exceptions. After a failure it restores the screen cursor and enables the
/// controls of @p rows, which a failed reopening does not do.
template <typename Fill> void fillFrom(TDataSet &rows, Fill fill)
{
    if (GuardedCall(fill))
        return;
    Screen().SetCursor(TCursor::crDefault);
    while (rows.ControlsDisabled())
        rows.EnableControls();
}

/// A line edit for a filter that Enter applies.
QLineEdit *filterLine(const char *name, const char *example)
{
    auto *line = new QLineEdit;
    line->setAccessibleName(s(name));
    line->setPlaceholderText(s("Filter and Enter, such as ") + s(example));
    line->setClearButtonEnabled(true);
    return line;
}

/// All funds in columns.
class ListPage : public QWidget
{
public:
    ListPage(Catalogue &catalogue, TImageList &images)
    {
        catalogue.Open(m_funds, "funds");
        m_filter = filterLine("Filter of the list", "FundName like '%Debt%'");
        m_list.setAccessibleName(s("Funds"));
        m_list.SetSmallImages(&images);
        m_list.SetReadOnly(true);
        m_list.AddColumn(s("Fund"), 330);
        m_list.AddColumn(s("Key"), 70);
        m_list.AddColumn(s("Group"), 180);
        m_list.AddColumn(s("Type"), 200);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(m_filter);
        layout->addWidget(&m_list);
        connect(m_filter, &QLineEdit::returnPressed, this, [this] { Fill(); });
        connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] { Refresh(); });
        connect(&m_list, &TListView::Resized, this, [this] { misc_SizeListViewColumns(m_list); });
        Fill();
        misc_ListViewFocus(m_list);
    }
    ~ListPage() override { misc_FreeListBookMarks(m_list, &m_funds); }

private:
    void Fill()
    {
        const auto filled = [this] {
            misc_BuildListView(m_list, &m_funds, m_filter->text(),
                               s("FundName;FundID;FundGroupName;GroupTypeDesc"), s("0;0;0;0"), QString(),
                               false, FundPicture, QString());
        };
        fillFrom(m_funds, filled);
        if (m_list.Items().Updating()) // an invalid filter leaves the update open
            m_list.Items().EndUpdate();
    }
    /// Reads the funds again and chooses the former fund if it still exists.
    void Refresh()
    {
        const TListItem *chosen = m_list.SelectedItem();
        const QString key = chosen ? chosen->SubItems().value(0) : QString();
        misc_FreeListBookMarks(m_list, &m_funds);
        fillFrom(m_funds, [this] { misc_RefreshIT(&m_funds, true); });
        Fill();
        for (int i = 0; i < m_list.Items().Count(); ++i) {
            if (m_list.Items()[i]->SubItems().value(0) == key) {
                m_list.SetSelected(m_list.Items()[i]);
                m_list.Items()[i]->MakeVisible();
                return;
            }
        }
        misc_ListViewFocus(m_list);
    }

    TClientDataSet m_funds;
    TListView m_list;
    QLineEdit *m_filter;
};

/// The group types in a combo box.
class ComboPage : public QWidget
{
public:
    explicit ComboPage(Catalogue &catalogue)
    {
        catalogue.Open(m_types, "types");
        Combo.setAccessibleName(s("Fund type"));
        auto *reload = new QPushButton(s("&Refresh"));
        reload->setToolTip(s("Reads the types again (F5)"));
        auto *layout = new QFormLayout(this);
        layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        layout->addRow(s("Fund &type"), &Combo);
        layout->addRow(QString(), reload);
        reload->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        connect(reload, &QPushButton::clicked, this, [this] { Fill(); });
        connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] { Fill(); });
        Fill();
    }
    ~ComboPage() override { misc_FreeComboBookMarks(Combo, &m_types); }

    TComboBox Combo;

private:
    /// Reads the types again and keeps the chosen one.
    void Fill()
    {
        const QString chosen = Combo.currentText();
        misc_FreeComboBookMarks(Combo, &m_types);
        fillFrom(m_types, [&] {
            misc_BuildComboBox(Combo, &m_types, s("GroupTypeDesc"), true, s("GroupTypeDesc"), chosen);
        });
    }

    TClientDataSet m_types;
};

/// The types, groups and funds as a tree. The frame itself handles F5.
class TreePage : public QWidget
{
public:
    TreePage(Catalogue &catalogue, TImageList &images)
    {
        catalogue.Open(m_types, "types");
        catalogue.Open(m_groups, "groups");
        catalogue.Open(m_funds, "funds");
        auto *filter = filterLine("Filter of the tree", "GroupTypeDesc like '%Debt%'");
        auto *keep = new QCheckBox(s("&Keep the state of the nodes on F5"));
        m_tree.Set_ImageList(&images);
        m_tree.Set_HeaderCaption(s("  Funds by type and group"));
        m_tree.Set_ShowHeader(true);
        m_tree.TreeView->setAccessibleName(s("Funds by type and group"));
        m_tree.AddLevel(&m_types, s("GroupTypeDesc"), TypePicture, QString(), s("GroupTypeID"), QString(),
                        s("GroupTypeID"));
        m_tree.AddLevel(&m_groups, s("FundGroupName"), GroupPicture, s("GroupTypeID"), s("FundGroupID"),
                        QString(), s("FundGroupID"));
        m_tree.AddLevel(&m_funds, s("FundName"), FundPicture, s("FundGroupID"), QString(), QString(),
                        s("FundID"));
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(filter);
        layout->addWidget(keep);
        layout->addWidget(&m_tree, 1);
        connect(keep, &QCheckBox::toggled, &m_tree, &TfraTreeView::Set_KeepTreeState);
        keep->setChecked(true);
        connectGuarded(filter, &QLineEdit::returnPressed, this,
                       [=, this] { m_tree.LevelFilter(0, filter->text(), true); });
        m_tree.Set_ViewStyle(vwsTree);
        if (TTreeNode *first = m_tree.TreeView->Items().GetFirstNode()) {
            first->SetExpanded(true);
            first->GetFirstChild()->SetExpanded(true);
            first->SetSelected(true);
        }
    }

private:
    TClientDataSet m_types, m_groups, m_funds;
    TfraTreeView m_tree;
};

QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
}

bool savePictures(QTabWidget &window, ComboPage &combo, const QDir &folder)
{
    const auto save = [&](QWidget *shown, const char *name) {
        return shown->grab().save(folder.filePath(s("dataviews_%1.png").arg(s(name))));
    };
    window.setCurrentIndex(0);
    bool saved = save(&window, "list");
    window.setCurrentIndex(1);
    saved = save(&window, "combo") && saved;
    combo.Combo.showPopup();
    QCoreApplication::processEvents();
    saved = save(combo.Combo.view()->window(), "combo_open") && saved;
    combo.Combo.hidePopup();
    window.setCurrentIndex(2);
    return save(&window, "tree") && saved;
}

int run(const QStringList &arguments)
{
    const QString real = s(ZEL_SOURCE_DIR "/../shared/data/catalogue_real.csv.gz");
    Catalogue catalogue(arguments.value(1, QFile::exists(real) ? real : QString()));
    TImageList images;
    images.AddGlyphs({s("fund-type"), s("fund-group"), s("fund")});
    QTabWidget window;
    ListPage list(catalogue, images);
    ComboPage combo(catalogue);
    TreePage tree(catalogue, images);
    window.setWindowTitle(s("Views over datasets"));
    window.addTab(&list, s("&List"));
    window.addTab(&combo, s("&Combo box"));
    window.addTab(&tree, s("&Tree"));
    window.resize(820, 520);
    window.show();
    if (arguments.size() > 2)
        return savePictures(window, combo, QDir(arguments.at(2))) ? 0 : 1;
    return TApplication::exec();
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    const QStringList arguments = TApplication::arguments();
    if (arguments.value(3) == s("dark"))
        TApplication::setPalette(darkPalette());
    try {
        return run(arguments);
    } catch (const Exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
