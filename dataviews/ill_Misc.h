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
/// Routines that fill list views, combo boxes and trees from datasets, reopen and close datasets, and convert
/// delimited texts to lists and back.
///
/// Every item of a filled view has a bookmark of its row: the Data of a list item or tree node, the object of
/// a combo box line. The item owns the bookmark until the matching misc_Free...BookMarks routine frees it
/// with its dataset. Call that routine before clearing, refilling or destroying the view; the list and tree
/// builders call it before they clear the view. Bookmarks of a closed dataset are invalid and need not be
/// freed.
///
/// The routines pass on the exceptions of the data layer (unknown field, a text that is not a number) and
/// EListError for a missing list entry. They have no errors of their own.

/// An action on a row, for the host's screens. The routines here do not use it.
enum TDataBaseActionType { dbInsert, dbUpdate, dbDelete, dbClear };
/// The purpose of a form, for the host's screens. The routines here do not use it.
enum TFormViewType { vtSelect, vtEdit };
using TCharSet = std::bitset<256>;  ///< A set of 8-bit characters; other characters are in no set.
using TSetofInt = std::bitset<256>; ///< A set of integers from 0 to 255.

namespace Zel
{
/// The set of the 8-bit characters of @p characters.
ZEL_COMMONFRAMES_EXPORT TCharSet CharSet(const QString &characters);
} // namespace Zel

// --- datasets

/// Closes and reopens a TQuery, TStoredProc, TADOQuery, TADOStoredProc or TClientDataSet; ignores any other
/// kind. Queries and procedures are prepared first if necessary; procedures are executed. With @p
/// KeepPosition the row with the same number becomes current, or the last row when there are fewer rows;
/// otherwise the first. During the call the cursor shows a database wait and the controls are disabled. After
/// an exception they stay so.
ZEL_COMMONFRAMES_EXPORT void misc_RefreshIT(TDataSet *DataSet, bool KeepPosition);
/// Closes and unprepares a query, unprepares a procedure without closing it, closes a client dataset; ignores
/// any other kind.
ZEL_COMMONFRAMES_EXPORT void misc_CloseTheQuery(TDataSet *DataSet);

// --- texts and values

/// "A, B" of the trimmed texts, or A alone when B is blank.
ZEL_COMMONFRAMES_EXPORT QString misc_CalcFullName(const QString &A, const QString &B);
/// Every item followed by @p Separator; the whole text is trimmed. A final separator of one character is
/// removed, a longer one stays ("a; b;" for "; ").
ZEL_COMMONFRAMES_EXPORT QString misc_ConvertListToStr(const QStringList &List, const QString &Separator);
/// The trimmed items between the separators; empty for a blank text. Quoting is not supported.
ZEL_COMMONFRAMES_EXPORT QStringList misc_ConvertStrToList(const QString &S, QChar Separator);
/// The column text of @p Value: with Code 0 unchanged, with 1 as a number in "#,#0.00" (throws EConvertError
/// when it is not a number), with any other code an empty text.
ZEL_COMMONFRAMES_EXPORT QString misc_ExecFunction(int Code, const QString &Value);
/// @p S with only the characters in @p Chars, or with @p RemoveListed only those not in @p Chars. An empty
/// set gives an empty text in both cases.
ZEL_COMMONFRAMES_EXPORT QString misc_RemoveChar(const QString &S, const TCharSet &Chars, bool RemoveListed);

// --- list views

/// Fills @p ListView with one item for each row of @p DataSet that passes @p Filter. Does nothing when the
/// dataset is not active. @p FieldList and @p FormatList are parallel lists separated by ";": the fields of
/// the columns and their misc_ExecFunction codes. With @p UseCheckBox, and a view that shows check boxes, the
/// first field is the check mark ("1") instead of a column. A row with the same @p DistinctField as the row
/// before is left out, and so is a row whose item a listener of ItemInserted deletes. The picture is @p
/// ImageIndex, or the value of @p ImageField when @p ImageIndex is -1.
///
/// The filter text stays in the dataset but is switched off. An exception leaves the hour-glass cursor set
/// and the view in its update state.
ZEL_COMMONFRAMES_EXPORT void misc_BuildListView(TListView &ListView, TDataSet *DataSet, const QString &Filter,
                                                const QString &FieldList, const QString &FormatList,
                                                const QString &DistinctField, bool UseCheckBox,
                                                int ImageIndex, const QString &ImageField);
/// Frees the items' valid bookmarks of @p DataSet; the items keep their Data.
ZEL_COMMONFRAMES_EXPORT void misc_FreeListBookMarks(TListView &ListView, TDataSet *DataSet);
/// Removes every item without freeing bookmarks.
ZEL_COMMONFRAMES_EXPORT void misc_ClearListView(TListView *ListView);
/// Fits the columns to the view's width. Each column gets its percentage of the total column width, rounded
/// to a whole percent; the last one gets the rest. A hidden last column stays hidden.
ZEL_COMMONFRAMES_EXPORT void misc_SizeListViewColumns(TListView &ListView);
/// Deletes column @p Index of the TListView with that window handle (its winId), on Windows also of a native
/// list view. Ignores other handles and an index beyond the columns.
ZEL_COMMONFRAMES_EXPORT void misc_DeleteListViewColumn(int WindowHandle, int Index);
/// Selects and focuses the first item, if any.
ZEL_COMMONFRAMES_EXPORT void misc_ListViewFocus(TListView &ListView);
/// Call this after item @p Index was deleted. Selects the item that is now at @p Index, or the item before
/// when
/// @p Index is the last item or beyond. Does nothing when there is no such item.
ZEL_COMMONFRAMES_EXPORT void misc_ResetListViewFocus(TListView *ListView, int Index);
/// Whether an item has the caption @p Text, ignoring case and surrounding blanks.
ZEL_COMMONFRAMES_EXPORT bool misc_DoesListItemExist(const TListView *ListView, const QString &Text);
/// The sum of a column; column 0 is the caption. The characters of @p Chars are removed from each text, and a
/// blank text counts as 0.00. Returns 0 without items or for a column that does not exist. Throws
/// EConvertError for a text that is not a number.
ZEL_COMMONFRAMES_EXPORT double misc_TotalListViewColumn(const TListView *ListView, int Column,
                                                        const TCharSet &Chars);

// --- combo boxes

/// Reopens @p DataSet (see misc_RefreshIT) and fills @p ComboBox with @p DisplayField of every row. With
/// @p AddAll the first line is "ALL" (translated), without a bookmark. Chooses the last row whose @p
/// MatchField equals @p MatchValue, ignoring case; otherwise the first line.
ZEL_COMMONFRAMES_EXPORT void misc_BuildComboBox(TComboBox &ComboBox, TDataSet *DataSet,
                                                const QString &DisplayField, bool AddAll,
                                                const QString &MatchField, const QString &MatchValue);
/// Frees the lines' valid bookmarks of @p DataSet; the lines keep their objects. Writes "x=" and the number
/// of lines to the debug output (category "zel.dataviews").
ZEL_COMMONFRAMES_EXPORT void misc_FreeComboBookMarks(TComboBox &ComboBox, TDataSet *DataSet);

// --- tree views

/// Fills @p TreeView. Level k shows CaptionFields[k] of the rows of DataSets[k], with picture
/// ImageIndexes[k]. LinkFields[k - 1] links level k to the level above by two field names separated by ";":
/// the parent's field and the child's field with the same value. The rows of each level below the first must
/// be sorted by that key, so that a parent's children are consecutive rows, and must have a field with the
/// name and value of the parent's field. The cursors move. A node that OnAddition deletes is left out with
/// all its descendants; the handler frees its bookmark. After an exception the nodes built so far stay, and
/// the view's update ends.
ZEL_COMMONFRAMES_EXPORT void misc_BuildTreeView(TTreeView &TreeView, const QList<TDataSet *> &DataSets,
                                                const QStringList &LinkFields,
                                                const QStringList &CaptionFields,
                                                const QList<int> &ImageIndexes);
/// Frees the bookmarks of all nodes of @p Level, which belong to @p DataSet, and clears the nodes' Data.
ZEL_COMMONFRAMES_EXPORT void misc_FreeTreeBookMarks(TTreeView &TreeView, int Level, TDataSet *DataSet);
/// Removes every node without freeing bookmarks.
ZEL_COMMONFRAMES_EXPORT void misc_ClearTreeView(TTreeView *TreeView);
/// Selects the first node, if any.
ZEL_COMMONFRAMES_EXPORT void misc_TreeViewFocus(TTreeView &TreeView);

// --- panels

/// Switches a screen between its browse view (@p Show false, Panel1) and its data-field view (@p Show true,
/// Panel2). With Panel2, Mode 0 shows Panel3 and Panel4, Mode 1 only Panel3, Mode 2 only Panel4. In the
/// data-field view, the tree and the list are disabled and have the button colour. Panel3, Panel4, the tree
/// and the list may be nullptr.
ZEL_COMMONFRAMES_EXPORT void misc_ShowDataFields(QWidget *Panel1, QWidget *Panel2, QWidget *Panel3,
                                                 QWidget *Panel4, int Mode, bool Show, TTreeView *TreeView,
                                                 TListView *ListView);
