// A fund catalogue as a list, a combo box and a tree, filled from datasets in one call each. The argument is
// a catalogue as CSV, plain or packed with gzip; without one the real catalogue beside the project is shown,
// or a small one. With a folder as second argument the pictures of the three pages are saved there instead.
#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"
#include "dataviews/fra_TreeView.h"
#include "toolkit/TApplication.h"
#include "toolkit/TScreen.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
QString s(const char *text)
{
    return QString::fromLatin1(text);
}

QString textOf(const QString &path)
{
    QByteArray bytes;
    if (path.endsWith(s(".gz"))) {
        QProcess unpack;
        unpack.start(s("gzip"), {s("-dc"), path});
        if (unpack.waitForFinished() && unpack.exitCode() == 0)
            bytes = unpack.readAllStandardOutput();
    } else if (QFile file(path); file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
    }
    return QString::fromUtf8(bytes);
}

QStringList cellsOf(const QString &line)
{
    QStringList cells{QString()};
    bool quoted = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (c == QLatin1Char(',') && !quoted)
            cells.append(QString());
        else
            cells.last() += c;
    }
    return cells;
}

/// Type key and name, group key and name, fund key and name of every fund.
QList<QStringList> catalogueRows(const QString &path)
{
    QList<QStringList> rows;
    const QStringList lines = textOf(path).split(QLatin1Char('\n')).mid(1);
    for (const QString &line : lines) {
        const QStringList cells = cellsOf(line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line);
        if (cells.size() == 6)
            rows.append(cells);
    }
    for (int i = 0; rows.size() < 24 && lines.size() < 2; ++i) {
        rows.append({QString::number(i / 12), s("Type %1").arg(i / 12), QString::number(i / 4),
                     s("Group %1").arg(i / 4), QString::number(100 + i), s("Fund %1").arg(i)});
    }
    return rows;
}

/// The catalogue behind three providers, so that a refresh fetches it again.
struct Catalogue {
    explicit Catalogue(const QString &path)
    {
        provide(Types, s("types"), path, {0, 1});
        provide(Groups, s("groups"), path, {0, 2, 3});
        provide(Funds, s("funds"), path, {2, 4, 5, 3, 1});
    }
    void provide(TClientDataSet &dataSet, const QString &name, const QString &path, const QList<int> &columns)
    {
        connection.RegisterProvider(name, [path, columns](const TParams &) {
            static const QStringList names{s("GroupTypeID"),   s("GroupTypeDesc"), s("FundGroupID"),
                                           s("FundGroupName"), s("FundID"),        s("FundName")};
            QList<TFieldDef> fields;
            for (const int column : columns)
                fields.append({names.at(column), column % 2 == 0 ? TFieldType::Integer : TFieldType::String});
            TTableBuilder table(fields);
            const qsizetype key = columns.size() == 2 ? 0 : columns.at(1); // the rows' own key
            QString last;
            for (const QStringList &cells : catalogueRows(path)) {
                if (cells.at(key) == last)
                    continue;
                last = cells.at(key);
                for (const int column : columns)
                    table.Append(cells.at(column));
                table.EndRow();
            }
            return TDataPacket(table.Finish());
        });
        dataSet.SetRemoteServer(&connection);
        dataSet.SetProviderName(name);
        dataSet.Open();
    }
    TLocalConnection connection;
    TClientDataSet Types, Groups, Funds;
};
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Catalogue catalogue(argc > 1 ? QString::fromLocal8Bit(argv[1])
                                 : s(ZEL_SOURCE_DIR "/../shared/data/catalogue_real.csv.gz"));
    // The list and the combo box move their dataset's cursor and filter; each has a cursor of its own.
    TClientDataSet listRows;
    listRows.CloneCursor(&catalogue.Funds, true, false);
    TClientDataSet comboRows;
    comboRows.CloneCursor(&catalogue.Types, true, false);

    QTabWidget window;
    window.setWindowTitle(s("Views over datasets"));
    TImageList images;
    images.AddGlyphs({s("fund-type"), s("fund-group"), s("fund")});

    auto *listPage = new QWidget(&window);
    auto *listLayout = new QVBoxLayout(listPage);
    auto *listFilter = new QLineEdit(listPage);
    listFilter->setPlaceholderText(s("Filter and Enter, such as FundName like '%Debt%'"));
    listFilter->setAccessibleName(s("Filter of the list"));
    listLayout->addWidget(listFilter);
    auto *list = new TListView(listPage);
    list->setAccessibleName(s("Funds"));
    list->SetSmallImages(&images);
    list->AddColumn(s("Fund"), 330);
    list->AddColumn(s("Key"), 70);
    list->AddColumn(s("Group"), 180);
    list->AddColumn(s("Type"), 200);
    listLayout->addWidget(list);
    const auto fillList = [&] {
        misc_BuildListView(*list, &listRows, listFilter->text(),
                           s("FundName;FundID;FundGroupName;GroupTypeDesc"), s("0;0;0;0"), QString(), false,
                           2, QString());
        misc_ListViewFocus(*list);
    };
    QObject::connect(listFilter, &QLineEdit::returnPressed, list, [&] {
        // A refused filter leaves the view in its update state and the hour-glass up.
        if (!GuardedCall(fillList)) {
            list->Items().EndUpdate();
            Screen().SetCursor(TCursor::crDefault);
        }
    });
    window.addTab(listPage, s("&List"));

    auto *comboPage = new QWidget(&window);
    auto *comboLayout = new QVBoxLayout(comboPage);
    auto *combo = new TComboBox(comboPage);
    combo->setAccessibleName(s("Fund type"));
    comboLayout->addWidget(combo);
    auto *reload = new QPushButton(s("&Refresh"), comboPage);
    comboLayout->addWidget(reload, 0, Qt::AlignLeft);
    comboLayout->addStretch();
    const auto fillCombo = [&] {
        const int chosen = combo->ItemIndex();
        const QString text = chosen < 0 ? QString() : combo->Items().Text(chosen);
        misc_FreeComboBookMarks(*combo, &comboRows);
        misc_BuildComboBox(*combo, &comboRows, s("GroupTypeDesc"), true, s("GroupTypeDesc"), text);
    };
    QObject::connect(reload, &QPushButton::clicked, combo, [&] { GuardedCall(fillCombo); });
    window.addTab(comboPage, s("&Combo box"));

    auto *treePage = new QWidget(&window);
    auto *treeLayout = new QVBoxLayout(treePage);
    auto *treeFilter = new QLineEdit(treePage);
    treeFilter->setPlaceholderText(s("Filter of the types and Enter, such as GroupTypeDesc like '%Debt%'"));
    treeFilter->setAccessibleName(s("Filter of the tree"));
    treeLayout->addWidget(treeFilter);
    auto *keep = new QCheckBox(s("&Keep the state of the nodes on F5"), treePage);
    treeLayout->addWidget(keep);
    auto *tree = new TfraTreeView(treePage);
    tree->Set_ImageList(&images);
    tree->Set_HeaderCaption(s("  Funds by type and group"));
    tree->Set_ShowHeader(true);
    tree->AddLevel(&catalogue.Types, s("GroupTypeDesc"), 0, QString(), s("GroupTypeID"), QString(),
                   s("GroupTypeID"));
    tree->AddLevel(&catalogue.Groups, s("FundGroupName"), 1, s("GroupTypeID"), s("FundGroupID"), QString(),
                   s("FundGroupID"));
    tree->AddLevel(&catalogue.Funds, s("FundName"), 2, s("FundGroupID"), QString(), QString(), s("FundID"));
    treeLayout->addWidget(tree, 1);
    QObject::connect(keep, &QCheckBox::toggled, tree, &TfraTreeView::Set_KeepTreeState);
    keep->setChecked(true);
    QObject::connect(treeFilter, &QLineEdit::returnPressed, tree,
                     [&] { GuardedCall([&] { tree->LevelFilter(0, treeFilter->text(), true); }); });
    window.addTab(treePage, s("&Tree"));

    fillList();
    fillCombo();
    tree->Set_ViewStyle(vwsTree);
    if (TTreeNode *first = tree->TreeView->Items().GetFirstNode()) {
        first->SetExpanded(true);
        first->GetFirstChild()->SetExpanded(true);
        first->SetSelected(true);
    }
    window.resize(820, 520);
    window.show();
    int result = 0;
    if (argc > 2) {
        const QDir folder(QString::fromLocal8Bit(argv[2]));
        for (int page = 0; page < window.count(); ++page) {
            window.setCurrentIndex(page);
            const QString picture = folder.filePath(s("dataviews_%1.png").arg(page));
            result |= window.grab().save(picture) ? 0 : 1;
        }
    } else {
        result = QApplication::exec();
    }
    misc_FreeListBookMarks(*list, &listRows);
    misc_FreeComboBookMarks(*combo, &comboRows);
    return result;
}
