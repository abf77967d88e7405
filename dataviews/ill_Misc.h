#pragma once

#include "data/DataSet.h"
#include "export/zel_commonframes_export.h"
#include "toolkit/TComboBox.h"
#include "toolkit/TListView.h"
#include "toolkit/TTreeView.h"

#include <QList>
#include <QStringList>

#include <bitset>

/// \file
/// Routines that fill list views, combo boxes and trees from datasets, reopen and close datasets, and turn
/// delimited texts into lists and back.
///
/// Every item of a filled view carries a bookmark of its row: a list item's and a tree node's Data, a combo
/// box line's object. The item owns it until the matching misc_Free...BookMarks routine gives it back, with
/// the dataset it came from. Call that before clearing, refilling or destroying the view; the list and tree
/// builders do it themselves before they clear. Bookmarks of a dataset that has closed since are void and
/// need no giving back.
///
/// No routine reports errors of its own: those of the data layer (unknown field, a text that is no number)
/// and EListError for a missing list entry pass to the caller.

/// What is done to a row. For the host's screens; no routine here asks for it.
enum TDataBaseActionType { dbInsert, dbUpdate, dbDelete, dbClear };
/// What a form is opened for. The same.
enum TFormViewType { vtSelect, vtEdit };
using TCharSet = std::bitset<256>;  ///< Of the 8-bit characters; a character beyond them is in no set.
using TSetofInt = std::bitset<256>; ///< Of the integers 0 to 255.

namespace Zel
{
/// The set of the 8-bit characters of @p characters.
ZEL_COMMONFRAMES_EXPORT TCharSet CharSet(const QString &characters);
} // namespace Zel

// --- datasets

/// Closes and reopens a TQuery, TStoredProc, TADOQuery, TADOStoredProc (prepared where they are not; the
/// procedures are executed) or TClientDataSet; does nothing to any other kind. With @p KeepPosition the same
/// row by number is current afterwards, or the last when there are fewer now; else the first. Shows
/// the database-wait cursor and keeps controls disabled meanwhile; an error leaves both so.
ZEL_COMMONFRAMES_EXPORT void misc_RefreshIT(TDataSet *DataSet, bool KeepPosition);
/// Closes and unprepares a query, only unprepares a procedure, closes a client dataset; nothing to others.
ZEL_COMMONFRAMES_EXPORT void misc_CloseTheQuery(TDataSet *DataSet);

// --- texts and values

/// "A, B" of the trimmed texts, or A alone when B is blank.
ZEL_COMMONFRAMES_EXPORT QString misc_CalcFullName(const QString &A, const QString &B);
/// Every item followed by @p Separator, trimmed; a last separator of one character goes, a longer one stays
/// ("a; b;" for "; ").
ZEL_COMMONFRAMES_EXPORT QString misc_ConvertListToStr(const QStringList &List, const QString &Separator);
/// The trimmed items between the separators, none for a blank text. There is no quoting.
ZEL_COMMONFRAMES_EXPORT QStringList misc_ConvertStrToList(const QString &S, QChar Separator);
/// @p Value as a column shows it: Code 0 unchanged, 1 as a number in "#,#0.00" (EConvertError when it is
/// none), any other nothing.
ZEL_COMMONFRAMES_EXPORT QString misc_ExecFunction(int Code, const QString &Value);
/// Keeps only the characters in @p Chars, or only those not in it with @p RemoveListed. An empty set clears
/// the text.
ZEL_COMMONFRAMES_EXPORT QString misc_RemoveChar(const QString &S, const TCharSet &Chars, bool RemoveListed);

// --- list views

/// Fills @p ListView with the rows of @p DataSet that pass @p Filter, one item each; nothing when the dataset
/// is not active. @p FieldList and @p FormatList are parallel lists separated by ";": the fields of the
/// columns and the misc_ExecFunction code of each. With @p UseCheckBox and a view that shows check boxes the
/// first field is the check ("1") instead of a column. Rows that repeat the row before in @p DistinctField
/// are left out, and so is a row whose item a listener of ItemInserted deletes. The picture is @p ImageIndex,
/// or the value of @p ImageField when that is -1.
///
/// The filter text stays on the dataset, switched off. An error leaves the hour-glass cursor and the view in
/// its update state.
ZEL_COMMONFRAMES_EXPORT void misc_BuildListView(TListView &ListView, TDataSet *DataSet, const QString &Filter,
                                                const QString &FieldList, const QString &FormatList,
                                                const QString &DistinctField, bool UseCheckBox,
                                                int ImageIndex, const QString &ImageField);
/// Gives back the bookmarks of the items that are valid ones of @p DataSet; the items keep their Data.
ZEL_COMMONFRAMES_EXPORT void misc_FreeListBookMarks(TListView &ListView, TDataSet *DataSet);
/// Removes every item; bookmarks are not given back.
ZEL_COMMONFRAMES_EXPORT void misc_ClearListView(TListView *ListView);
/// Fits the columns to the view's width, each to its whole percentage of all column widths, the last one to
/// the rest. A hidden last column stays hidden.
ZEL_COMMONFRAMES_EXPORT void misc_SizeListViewColumns(TListView &ListView);
/// Sends the list view with that window handle (its winId) the message that deletes column @p Index; on
/// Windows also a list view of the system's own. A handle of anything else is ignored, and so is an index
/// that is no column.
ZEL_COMMONFRAMES_EXPORT void misc_DeleteListViewColumn(int WindowHandle, int Index);
/// Selects and focuses the first item, if any.
ZEL_COMMONFRAMES_EXPORT void misc_ListViewFocus(TListView &ListView);
/// After item @p Index was deleted: selects the item now there, or the one before when it is the last or
/// beyond. Nothing when that item does not exist.
ZEL_COMMONFRAMES_EXPORT void misc_ResetListViewFocus(TListView *ListView, int Index);
/// Whether an item's caption is @p Text, blanks around and case aside.
ZEL_COMMONFRAMES_EXPORT bool misc_DoesListItemExist(const TListView *ListView, const QString &Text);
/// The sum of a column (0 is the caption) with the characters of @p Chars left out of each text; blank counts
/// as 0.00. 0 with no items or a column beyond the columns; EConvertError for a text that is no number.
ZEL_COMMONFRAMES_EXPORT double misc_TotalListViewColumn(const TListView *ListView, int Column,
                                                        const TCharSet &Chars);

// --- combo boxes

/// Reopens @p DataSet (see misc_RefreshIT) and fills @p ComboBox with @p DisplayField of every row, after a
/// line "ALL" (translated) without a bookmark with @p AddAll. Chooses the last row whose @p MatchField equals
/// @p MatchValue without regard to case, else the first line.
ZEL_COMMONFRAMES_EXPORT void misc_BuildComboBox(TComboBox &ComboBox, TDataSet *DataSet,
                                                const QString &DisplayField, bool AddAll,
                                                const QString &MatchField, const QString &MatchValue);
/// Gives back the bookmarks of the lines that are valid ones of @p DataSet; the lines keep their objects.
/// Writes "x=" and the number of lines to the debug output (category "zel.dataviews").
ZEL_COMMONFRAMES_EXPORT void misc_FreeComboBookMarks(TComboBox &ComboBox, TDataSet *DataSet);

// --- tree views

/// Fills @p TreeView: level k shows the rows of DataSets[k] by CaptionFields[k] with picture ImageIndexes[k].
/// LinkFields[k - 1] ties level k to the level above by two field names separated by ";": the parent's field
/// and the child's field that holds the same value. Each level below the first must be ordered by that key
/// and carry a field of the parent's name with the same value: a parent's children are one run of rows. The
/// cursors move. A node that OnAddition deletes is left out with all that would be below it; its bookmark is
/// the handler's to give back. An error leaves what was built and ends the view's update.
ZEL_COMMONFRAMES_EXPORT void misc_BuildTreeView(TTreeView &TreeView, const QList<TDataSet *> &DataSets,
                                                const QStringList &LinkFields,
                                                const QStringList &CaptionFields,
                                                const QList<int> &ImageIndexes);
/// Gives the bookmarks of all nodes of @p Level back to @p DataSet and clears their Data.
ZEL_COMMONFRAMES_EXPORT void misc_FreeTreeBookMarks(TTreeView &TreeView, int Level, TDataSet *DataSet);
/// Removes every node; bookmarks are not given back.
ZEL_COMMONFRAMES_EXPORT void misc_ClearTreeView(TTreeView *TreeView);
/// Selects the first node, if any.
ZEL_COMMONFRAMES_EXPORT void misc_TreeViewFocus(TTreeView &TreeView);

// --- panels

/// Switches a screen between its browse view (@p Show false) and its data-field view. Panel1 belongs to the
/// first, Panel2 to the second; Mode 0 shows Panel3 and Panel4 with it, 1 Panel3 only, 2 Panel4 only. The
/// tree and list are disabled and take the button colour meanwhile. Panel3, Panel4 and the views may be
/// nullptr.
ZEL_COMMONFRAMES_EXPORT void misc_ShowDataFields(QWidget *Panel1, QWidget *Panel2, QWidget *Panel3,
                                                 QWidget *Panel4, int Mode, bool Show, TTreeView *TreeView,
                                                 TListView *ListView);
