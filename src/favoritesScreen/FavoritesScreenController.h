// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/FileChooser.h"
#include "contacts/VCardReader.h"
#include "favoritesScreen/FavoritesModel.h"
#include "screenBase/ScreenController.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>
#include <optional>

class Session;

// The favorites screen: the saved birthdays as cards, sorted by the chosen
// order, with the sort menu, renaming by long press and deleting by swipe.
// Choosing a favorite hands it to a new main screen.
class FavoritesScreenController : public ScreenController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screen host.")

    Q_PROPERTY(FavoritesModel *model READ model CONSTANT)
    Q_PROPERTY(QStringList sortChoices READ sortChoices CONSTANT)
    Q_PROPERTY(QString entriesText READ entriesText NOTIFY countChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // What to do while the list is empty; empty otherwise.
    Q_PROPERTY(QString emptyHint READ emptyHint NOTIFY countChanged)
    Q_PROPERTY(int scrollTarget READ scrollTarget CONSTANT)
    Q_PROPERTY(QColor signCircleColor READ signCircleColor CONSTANT)
    Q_PROPERTY(QColor starColor READ starColor CONSTANT)
    Q_PROPERTY(QColor birthdayColor READ birthdayColor CONSTANT)
    Q_PROPERTY(QColor ageColor READ ageColor CONSTANT)
    Q_PROPERTY(int nameWeight READ nameWeight CONSTANT)
    Q_PROPERTY(int ageWeight READ ageWeight CONSTANT)
    Q_PROPERTY(QColor cardColor READ cardColor CONSTANT)
    Q_PROPERTY(QColor cardBorderColor READ cardBorderColor CONSTANT)

    Q_PROPERTY(int editRow READ editRow NOTIFY editChanged)
    Q_PROPERTY(QString editName READ editName NOTIFY editChanged)
    Q_PROPERTY(int editDay READ editDay NOTIFY editChanged)
    Q_PROPERTY(int editMonth READ editMonth NOTIFY editChanged)
    // 0 for a birthday without a year: the year wheel's "no year".
    Q_PROPERTY(int editYear READ editYear NOTIFY editChanged)
    // The row swiped open to show its red delete button, or -1.
    Q_PROPERTY(int openRow READ openRow WRITE setOpenRow NOTIFY openRowChanged)
    Q_PROPERTY(bool undoVisible READ undoVisible NOTIFY undoChanged)
    Q_PROPERTY(QString undoText READ undoText NOTIFY undoChanged)
    Q_PROPERTY(QString importSummary READ importSummary NOTIFY importFinished)
    // Shown beside the main screen in a wide window: a chosen favorite is
    // shown in the other pane, and there is no way back, being there.
    Q_PROPERTY(bool besideMain READ besideMain WRITE setBesideMain NOTIFY besideMainChanged)
    // The toolkit's file dialog, where no system chooser answers: what it
    // asks for and where it starts.
    Q_PROPERTY(QString fileDialogTitle READ fileDialogTitle NOTIFY fileDialogRequested)
    Q_PROPERTY(QStringList fileDialogFilters READ fileDialogFilters NOTIFY fileDialogRequested)
    Q_PROPERTY(bool fileDialogSaves READ fileDialogSaves NOTIFY fileDialogRequested)
    Q_PROPERTY(QUrl fileDialogFolder READ fileDialogFolder NOTIFY fileDialogRequested)
    Q_PROPERTY(QString fileDialogAcceptText READ fileDialogAcceptText NOTIFY fileDialogRequested)

public:
    // Where a row comes to rest when a swipe is let go (see RowSwipe).
    enum SwipeOutcome { SwipeClosed, SwipeOpen, SwipeDelete };
    Q_ENUM(SwipeOutcome)
    // What a file is chosen for.
    enum FileTask { ImportVCards, ExportVCards, ExportCalendar };
    Q_ENUM(FileTask)

    // How long "Undo" stays after a delete. A screen reader takes longer to
    // say what went and how to bring it back, and the keyboard then needs
    // longer to get there.
    static constexpr int undoMillisecondsFor(bool screenReaderOn)
    {
        return screenReaderOn ? 12'000 : 5'000;
    }

    explicit FavoritesScreenController(Session &session, QObject *parent = nullptr);

    FavoritesModel *model() const { return m_model; }
    QStringList sortChoices() const;
    QString entriesText() const;
    int count() const;
    QString emptyHint() const;
    // The row the list scrolls to a second after loading, or -1.
    int scrollTarget() const { return m_scrollTarget; }
    QColor signCircleColor() const { return m_signCircle; }
    QColor starColor() const { return m_star; }
    QColor birthdayColor() const { return m_birthday; }
    QColor ageColor() const { return m_age; }
    int nameWeight() const { return m_nameWeight; }
    int ageWeight() const { return m_ageWeight; }
    QColor cardColor() const;
    QColor cardBorderColor() const;
    int editRow() const { return m_editRow; }
    QString editName() const { return m_editName; }
    int editDay() const { return m_editDate.day(); }
    int editMonth() const { return m_editDate.month(); }
    int editYear() const { return m_editYearKnown ? m_editDate.year() : 0; }
    int openRow() const { return m_openRow; }
    void setOpenRow(int row);
    bool undoVisible() const { return !m_deleted.isEmpty(); }
    QString undoText() const;
    QString importSummary() const { return m_importSummary; }
    bool besideMain() const { return m_besideMain; }
    void setBesideMain(bool beside);
    QString fileDialogTitle() const;
    QStringList fileDialogFilters() const;
    bool fileDialogSaves() const { return m_fileTask != ImportVCards; }
    QString fileDialogAcceptText() const;
    QUrl fileDialogFolder() const;
    // What the system's chooser is asked for `task`.
    FileChooser::Request fileRequest(FileTask task) const;

    // The screen's load: the list read, sorted and themed.
    Q_INVOKABLE void viewDidLoad();
    // Each time the screen appears: the rows are reloaded (and fly in).
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void backPressed();
    Q_INVOKABLE void sortPressed();
    // One of the sort menu's choices: 0 by name, 1 by age, 2 by birthday.
    Q_INVOKABLE void chooseSort(int order);
    Q_INVOKABLE void selectRow(int row);
    Q_INVOKABLE void longPressed(int row);
    // "OK" in the edit dialog: the name as typed, the date from its wheels.
    Q_INVOKABLE void confirmEdit(const QString &name, int day, int month, int year);
    // Deletes at once and closes the open row; "Undo" then stays for a few
    // seconds after the last of a run of deletes.
    // From the keyboard, the next row then takes the keyboard as by Tab.
    Q_INVOKABLE void deleteRow(int row, bool byKeyboard = false);
    // Puts every favorite of the run back at its place, in one write, and
    // says whether that reached the disk. One that did not is still in the
    // list (written again with the next change) and the save notice says so;
    // the offer is used up either way, so a second "Undo" cannot double them.
    Q_INVOKABLE bool undoDelete(bool byKeyboard = false);
    // `pixelsPerMillimetre` of the screen the row is on (0 where unknown).
    Q_INVOKABLE SwipeOutcome swipeOutcome(qreal travel, qreal rowWidth, qreal buttonWidth,
                                          qreal pixelsPerMillimetre) const;
    // Where a row stands in the list, as a screen reader says it: "3 of 12".
    Q_INVOKABLE QString positionText(int row, int count) const;
    // "Import a vCard file…" with the file chosen in the dialog, and "Import
    // from contacts": the birthdays added in one write, the list shown
    // again, and importSummary says what happened.
    Q_INVOKABLE void importFile(const QUrl &file);
    Q_INVOKABLE void importContacts();
    // The favorites changed elsewhere (added on the main screen beside the
    // list): the rows are shown again in the chosen order.
    Q_INVOKABLE void favoritesChangedElsewhere();
    // "Import a vCard file…", "Export to a vCard file…" and "Export to a
    // calendar file…": the system's file chooser asks where it can, else
    // the toolkit's dialog (fileDialogRequested). Closed without a file,
    // nothing happens.
    Q_INVOKABLE void chooseFile(FileTask task);
    // The file the toolkit's dialog gave for the task last chosen.
    Q_INVOKABLE void fileDialogAccepted(const QUrl &file);
    // The favorites written whole to `file`, as vCards or as a calendar;
    // importSummary says how many, or that nothing was written.
    Q_INVOKABLE void exportFile(FileTask task, const QUrl &file);

signals:
    void countChanged();
    void openRowChanged();
    void editChanged();
    void sortMenuRequested();
    void editDialogRequested();
    void undoChanged();
    void importFinished();
    void besideMainChanged();
    // Beside the main screen: a favorite was handed over for it to show.
    void favoriteHandedOver();
    void fileDialogRequested();
    // The keyboard is to go to this row: the one after a deleted one, or
    // the first one an undo brought back.
    void rowToFocus(int row);

private:
    void applyOrder();
    void reloadRows();

    FavoritesModel *m_model;
    qint64 m_sort = 0;
    bool m_showWeekday = false;
    int m_scrollTarget = -1;
    QColor m_signCircle;
    QColor m_star;
    QColor m_birthday;
    QColor m_age;
    int m_nameWeight = QFont::Thin;
    int m_ageWeight = QFont::Thin;
    int m_editRow = -1;
    QString m_editName;
    QDate m_editDate;
    bool m_editYearKnown = true;
    struct Deleted
    {
        int row;
        Favorite favorite;
    };
    // The run of deletes "Undo" takes back, the first deleted first.
    QList<Deleted> m_deleted;
    int m_openRow = -1;
    QTimer m_undoTimer;
    QString m_importSummary;
    bool m_besideMain = false;
    FileTask m_fileTask = ImportVCards;
    // A question is open with the system's chooser.
    bool m_choosing = false;
    FileChooser *m_chooser = nullptr;

    void finishImport(const QList<VCardContact> &contacts);
    void listenToChooser(FileChooser *chooser);
    void askWithFileDialog();
};
