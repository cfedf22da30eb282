// SPDX-License-Identifier: MIT
#include "favoritesScreen/FavoritesScreenController.h"

#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "contacts/ContactsFollower.h"
#include "contacts/PhoneContacts.h"
#include "contacts/SavedFile.h"
#include "contacts/VCardFile.h"
#include "core/DatePattern.h"
#include "core/DateWheels.h"
#include "core/DayOfBirth.h"
#include "core/DebugLog.h"
#include "core/FatalError.h"
#include "core/OneLine.h"
#include "favorites/FavoritesSorting.h"
#include "favorites/RowSwipe.h"
#include "screenBase/FallbackFileDialog.h"
#include "session/Session.h"
#include "settings/SettingsStore.h"
#include "sync/SyncService.h"
#include "texts/AccessibleNames.h"

#include <QAccessible>
#include <QDir>
#include <QFileInfo>
#include <QStringBuilder>
#include <QUrl>
#include <utility>

using namespace Qt::Literals::StringLiterals;

FavoritesScreenController::FavoritesScreenController(Session &session, QObject *parent)
    : ScreenController(session, parent), m_model(new FavoritesModel(this))
{
    m_undoTimer.setSingleShot(true);
    m_undoTimer.setInterval(undoMillisecondsFor(QAccessible::isActive()));
    connect(&m_undoTimer, &QTimer::timeout, this, [this] {
        m_deleted.clear();
        emit undoChanged();
    });
    // Favorites that follow the address books change while the list is open.
    if (m_session.contacts) {
        connect(m_session.contacts, &ContactsFollower::favoritesChanged, this, [this] {
            applyOrder();
            reloadRows();
        });
    }
    // So do favorites synced from another device.
    if (m_session.sync) {
        connect(m_session.sync, &SyncService::favoritesReceived, this, [this] {
            m_session.favorites.load();
            applyOrder();
            reloadRows();
        });
    }
}

QStringList FavoritesScreenController::sortChoices() const
{
    const UiStrings &s = m_session.strings;
    return {s[UiText::SortByName], s[UiText::SortByAge], s[UiText::SortByBirthday]};
}

int FavoritesScreenController::count() const
{
    return int(m_session.favorites.count());
}

QString FavoritesScreenController::entriesText() const
{
    return m_session.strings[UiText::Entries] + u' ' + QString::number(count());
}

QString FavoritesScreenController::emptyHint() const
{
    return count() == 0 ? m_session.strings[UiText::NoFavoritesYet] : QString();
}

QColor FavoritesScreenController::cardColor() const
{
    QColor color = ScreenTheme::toColor(SystemColors::of(m_session.appearance).background);
    color.setAlphaF(0.2f);
    return color;
}

QColor FavoritesScreenController::cardBorderColor() const
{
    return ScreenTheme::toColor(SystemColors::of(m_session.appearance).background);
}

void FavoritesScreenController::viewDidLoad()
{
    FavoritesStore &favorites = m_session.favorites;
    SettingsStore &settings = m_session.settings;

    QStringList lines;
    lines.reserve(favorites.count());
    for (const Favorite &favorite : favorites.all())
        lines.append(u"person = "_s % favorite.birthday % u"\t\t"_s % favorite.name);
    DebugLog::lines(lines);

    favorites.load();

    m_sort = settings.value(SettingsKeys::sort);
    applyOrder();

    if (FavoritesSorting::orderFor(m_sort) == FavoritesSorting::Order::ByBirthday) {
        // The first birthday still to come this year; its row goes to the top.
        const QDate today = m_session.clock.now().date();
        for (qsizetype i = 0; i < favorites.count(); ++i) {
            if (FavoriteCards::birthdayStillToCome(favorites.at(i).birthday, today)
                    .value_or(true)) {
                m_scrollTarget = int(i);
                break;
            }
        }
    }
    m_showWeekday = settings.value(SettingsKeys::weekday);

    const int theme = ThemeTable::stored(settings.value(SettingsKeys::color));
    m_theme->apply(m_session.themes.look(theme));
    const FavoriteCardColors colors = FavoriteCards::legible(
        FavoriteCards::colors(m_session.themes, theme, m_session.appearance),
        FavoriteCards::cardBackdrop(m_session.appearance, m_theme->backdrop()));
    m_signCircle = ScreenTheme::toColor(colors.signCircle);
    m_star = ScreenTheme::toColor(colors.star);
    m_birthday = ScreenTheme::toColor(colors.birthday);
    m_age = ScreenTheme::toColor(colors.age);
    m_nameWeight = colors.thinName ? QFont::Thin : QFont::Light;
    m_ageWeight = colors.thinAge ? QFont::Thin : QFont::Light;

    reloadRows();
}

void FavoritesScreenController::viewWillAppear()
{
    reloadRows();
}

void FavoritesScreenController::applyOrder()
{
    FavoritesStore &favorites = m_session.favorites;
    favorites.reorder(
        FavoritesSorting::ordering(favorites.all(), FavoritesSorting::orderFor(m_sort)));
}

void FavoritesScreenController::setOpenRow(int row)
{
    if (row == m_openRow)
        return;
    m_openRow = row;
    emit openRowChanged();
}

void FavoritesScreenController::reloadRows()
{
    // Rows move or change under it: no row stays open.
    setOpenRow(-1);
    Session &session = m_session;
    const bool showWeekday = m_showWeekday;
    const QDateTime now = session.clock.now();
    const QVariantMap spokenNames = accessibleNames(session.strings, session.language());
    m_model->reset(session.favorites.all(), [&session, showWeekday, now,
                                             spokenNames](Favorite favorite, qsizetype) {
        // A card has one line for the name.
        favorite.name = shownOnOneLine(favorite.name);
        // The star setting is read for each card as it is made.
        FavoriteCard card =
            FavoriteCards::card(favorite, now, session.language(), session.formatLocale,
                                showWeekday, session.settings.value(SettingsKeys::star));
        if (!card.readable) {
            const QString label = session.strings[UiText::UnreadableBirthday];
            card.birthdayText =
                card.birthdayText.isEmpty() ? label : label + u": "_s + card.birthdayText;
        }
        card.spoken = FavoriteCards::spokenRow(card, session.strings, spokenNames);
        return card;
    });
    emit countChanged();
}

void FavoritesScreenController::backPressed()
{
    showScreen(Screen::Main);
}

void FavoritesScreenController::sortPressed()
{
    emit sortMenuRequested();
}

void FavoritesScreenController::chooseSort(int order)
{
    m_sort = order;
    m_session.settings.set(SettingsKeys::sort, m_sort);
    applyOrder();
    reloadRows();
    emit announcement(sortChoices().value(order));
}

void FavoritesScreenController::selectRow(int row)
{
    // One that cannot be shown opens to be fixed instead.
    if (!m_session.favorites.dayOfBirth(row)) {
        longPressed(row);
        return;
    }
    m_session.favorites.select(row);
    // Beside the main screen the list stays; the main screen takes the
    // favorite as a new one would.
    if (m_besideMain)
        emit favoriteHandedOver();
    else
        showScreen(Screen::Main);
}

void FavoritesScreenController::setBesideMain(bool beside)
{
    if (beside == m_besideMain)
        return;
    m_besideMain = beside;
    emit besideMainChanged();
}

void FavoritesScreenController::favoritesChangedElsewhere()
{
    applyOrder();
    reloadRows();
}

void FavoritesScreenController::longPressed(int row)
{
    const Favorite favorite = m_session.favorites.at(row);
    // A birthday that cannot be read is what the dialog is there to fix:
    // its wheels start at today.
    const std::optional<DayOfBirth> day = m_session.favorites.dayOfBirth(row);
    m_editRow = row;
    m_editName = favorite.name;
    m_editYearKnown = !day || day->hasYear();
    m_editDate = !day ? m_session.launchDate().date() : day->date().value_or(day->inLeapYear());
    emit editChanged();
    emit editDialogRequested();
}

void FavoritesScreenController::confirmEdit(const QString &name, int day, int month, int year)
{
    const std::optional<QDate> picked = DateWheels::date(day, month, year);
    if (!picked)
        return;
    const QDate date = *picked;
    // The year wheel's "no year" gives a birthday without a year.
    // The record text, without leading zeros; the name exactly as typed, even empty.
    const QString birthday = year == 0 ? DayOfBirth::withoutYear(date.day(), month)->stored()
                                       : DatePattern::stored().format(date);
    m_session.favorites.update(m_editRow, name, birthday);
    m_model->updateRow(m_editRow, m_session.favorites.at(m_editRow));
}

void FavoritesScreenController::deleteRow(int row, bool byKeyboard)
{
    // The rows below move up: one left open would come to rest under the
    // finger with its delete button out.
    setOpenRow(-1);
    const Favorite favorite = m_session.favorites.at(row);
    m_session.favorites.remove(row);
    m_model->removeRow(row);
    m_deleted.append({row, favorite});
    m_undoTimer.start();
    emit countChanged();
    emit undoChanged();
    // The keyboard was on the deleted row: it goes on to the next one. A
    // finger's delete leaves the keyboard where it was.
    if (byKeyboard && m_session.favorites.count() > 0)
        emit rowToFocus(std::min(row, int(m_session.favorites.count()) - 1));
    emit announcement(m_session.strings[UiText::DeletedUndoWithCtrlZ].arg(
        FavoriteCards::displayName(shownOnOneLine(favorite.name))));
}

bool FavoritesScreenController::undoDelete(bool byKeyboard)
{
    if (m_deleted.isEmpty())
        return false;
    setOpenRow(-1);
    const QList<Deleted> run = std::exchange(m_deleted, {});
    m_undoTimer.stop();
    FavoritesStore &favorites = m_session.favorites;
    // The last deleted goes back first: each then finds the rows around it
    // as they were when it went.
    SettingsBatch restore(m_session.settings);
    for (auto it = run.crbegin(); it != run.crend(); ++it) {
        const int row = std::min(it->row, int(favorites.count()));
        favorites.insert(row, it->favorite);
        m_model->insertRow(row, it->favorite);
    }
    // A failure reaches the save notice through the store's failure handler.
    const bool stored = restore.finish().ok();
    emit countChanged();
    emit undoChanged();
    if (byKeyboard)
        emit rowToFocus(std::min(run.constFirst().row, int(favorites.count()) - 1));
    return stored;
}

QString FavoritesScreenController::positionText(int row, int count) const
{
    return m_session.strings[UiText::PositionInList].arg(row + 1).arg(count);
}

QString FavoritesScreenController::undoText() const
{
    QStringList names;
    for (const Deleted &deleted : m_deleted)
        names.append(FavoriteCards::displayName(shownOnOneLine(deleted.favorite.name)));
    return names.isEmpty() ? QString()
                           : m_session.strings[UiText::Deleted] + u' ' + names.join(u", "_s);
}

FavoritesScreenController::SwipeOutcome
FavoritesScreenController::swipeOutcome(qreal travel, qreal rowWidth, qreal buttonWidth,
                                        qreal pixelsPerMillimetre) const
{
    switch (RowSwipe::settle(travel, rowWidth, buttonWidth, pixelsPerMillimetre)) {
    case RowSwipe::Outcome::Delete:
        return SwipeDelete;
    case RowSwipe::Outcome::Open:
        return SwipeOpen;
    case RowSwipe::Outcome::Closed:
        break;
    }
    return SwipeClosed;
}

namespace {

FileChooser::Filter vCardFilter(const UiStrings &strings)
{
    return {strings[UiText::VCardFiles],
            {u"*.vcf"_s, u"*.vcard"_s, u"*.VCF"_s},
            {u"text/vcard"_s, u"text/x-vcard"_s}};
}

FileChooser::Filter calendarFilter(const UiStrings &strings)
{
    return {strings[UiText::CalendarFiles], {u"*.ics"_s, u"*.ICS"_s}, {u"text/calendar"_s}};
}

// The file a dialog named. Qt's own dialog gives a name typed for saving
// as a bare path ("/home/anna/Documents/cards.vcf"), without "file:".
QString localPath(const QUrl &file)
{
    if (file.isLocalFile())
        return file.toLocalFile();
    return file.scheme().isEmpty() && QDir::isAbsolutePath(file.path()) ? file.path() : QString();
}

// A menu's "Export to a vCard file…" as a window's title.
QString asTitle(const QString &choice)
{
    return choice.endsWith(u'…') ? choice.chopped(1).trimmed() : choice;
}

} // namespace

FileChooser::Request FavoritesScreenController::fileRequest(FileTask task) const
{
    const UiStrings &s = m_session.strings;
    switch (task) {
    case ImportVCards:
        return {FileChooser::Mode::Open,
                asTitle(s[UiText::ImportVCardFile]),
                {vCardFilter(s)},
                FileChooser::personalFolder(FileChooser::Mode::Open),
                {}};
    case ExportVCards:
        return {FileChooser::Mode::Save,
                asTitle(s[UiText::ExportVCardFile]),
                {vCardFilter(s)},
                FileChooser::personalFolder(FileChooser::Mode::Save),
                u"birthdays.vcf"_s};
    case ExportCalendar:
        break;
    }
    return {FileChooser::Mode::Save,
            asTitle(s[UiText::ExportCalendarFile]),
            {calendarFilter(s)},
            FileChooser::personalFolder(FileChooser::Mode::Save),
            u"birthdays.ics"_s};
}

QString FavoritesScreenController::fileDialogTitle() const
{
    return fileRequest(m_fileTask).title;
}

QStringList FavoritesScreenController::fileDialogFilters() const
{
    QStringList filters;
    for (const FileChooser::Filter &filter : fileRequest(m_fileTask).filters)
        filters.append(FileChooser::nameFilter(filter));
    return filters;
}

QString FavoritesScreenController::fileDialogAcceptText() const
{
    return m_session.strings[fileDialogSaves() ? UiText::FileDialogSave : UiText::FileDialogOpen];
}

QUrl FavoritesScreenController::fileDialogFolder() const
{
    const QString folder = fileRequest(m_fileTask).folder;
    return folder.isEmpty() ? QUrl() : QUrl::fromLocalFile(folder);
}

void FavoritesScreenController::listenToChooser(FileChooser *chooser)
{
    // Only the screen that asked acts on the answer.
    connect(chooser, &FileChooser::chosen, this, [this](const QUrl &file) {
        if (!std::exchange(m_choosing, false))
            return;
        if (m_fileTask == ImportVCards)
            importFile(file);
        else
            exportFile(m_fileTask, file);
    });
    // Closed without a file: nothing to do, nothing to say.
    connect(chooser, &FileChooser::cancelled, this, [this] { m_choosing = false; });
    connect(chooser, &FileChooser::unavailable, this, [this] {
        if (std::exchange(m_choosing, false))
            askWithFileDialog();
    });
    connect(chooser, &FileChooser::failed, this, [this] {
        if (!std::exchange(m_choosing, false))
            return;
        m_importSummary = m_session.strings[UiText::FileChooserFailed];
        emit importFinished();
    });
}

void FavoritesScreenController::chooseFile(FileTask task)
{
    m_fileTask = task;
    FileChooser *chooser = m_session.fileChooser;
    if (!chooser) {
        askWithFileDialog();
        return;
    }
    if (m_chooser != chooser) {
        m_chooser = chooser;
        listenToChooser(chooser);
    }
    m_choosing = true;
    chooser->choose(fileRequest(task));
}

void FavoritesScreenController::askWithFileDialog()
{
    FallbackFileDialog::instance().prepare(m_theme, m_session.strings,
                                           fileRequest(m_fileTask).suggestedName);
    emit fileDialogRequested();
}

void FavoritesScreenController::fileDialogAccepted(const QUrl &file)
{
    if (m_fileTask == ImportVCards) {
        importFile(file);
        return;
    }
    // The toolkit's dialog takes a name as typed: "birthdays" is saved as
    // the kind of file it is.
    QString path = localPath(file);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += m_fileTask == ExportCalendar ? u".ics"_s : u".vcf"_s;
    exportFile(m_fileTask, path.isEmpty() ? file : QUrl::fromLocalFile(path));
}

void FavoritesScreenController::exportFile(FileTask task, const QUrl &file)
{
    const QString path = localPath(file);
    const QList<Favorite> favorites = m_session.favorites.all();
    const BirthdayExport::Output output =
        task == ExportCalendar
            ? BirthdayExport::calendar(favorites, m_session.strings, m_session.clock.now())
            : BirthdayExport::vCards(favorites);
    const QString shownPath = shownOnOneLine(QDir::toNativeSeparators(path));
    const QString problem = path.isEmpty() ? u"not a local file: "_s + file.toString()
                                           : saveWholeFile(path, output.text);
    if (!problem.isEmpty()) {
        DebugLog::line(u"export: "_s + problem);
        m_importSummary = m_session.strings[UiText::ExportFailed].arg(
            path.isEmpty() ? shownOnOneLine(file.toDisplayString()) : shownPath);
    } else {
        m_importSummary =
            filled(m_session.strings.counted(UiText::ExportSaved, output.written), {shownPath});
        if (output.unreadable > 0) {
            m_importSummary +=
                u'\n' + m_session.strings.counted(UiText::ExportLeftOut, output.unreadable);
        }
    }
    emit importFinished();
}

void FavoritesScreenController::importFile(const QUrl &url)
{
    const VCardFile read = VCardFile::read(localPath(url));
    if (!read.ok()) {
        UiText problem = UiText::ImportUnreadableFile;
        if (read.unreadable.isEmpty() && read.cards.error == VCardReader::Error::NotVCard)
            problem = UiText::ImportNotVCard;
        else if (read.unreadable.isEmpty() && read.cards.error == VCardReader::Error::Truncated)
            problem = UiText::ImportTruncated;
        else if (read.unreadable.isEmpty() && read.cards.error == VCardReader::Error::TooLarge)
            problem = UiText::ImportTooLarge;
        DebugLog::line(u"import of "_s + url.toString() + u": "_s + read.problem());
        m_importSummary = m_session.strings[problem];
        emit importFinished();
        return;
    }
    finishImport(read.cards.contacts);
}

void FavoritesScreenController::importContacts()
{
    const PhoneContactsRead read = PhoneContacts::readForImport(m_session.phoneContacts);
    DebugLog::lines(read.sources);
    // No address book, or only empty ones (the address-book service always
    // has its own): a count of nothing added would not tell why.
    if (read.contacts.isEmpty()) {
        m_importSummary = m_session.strings[UiText::NoAddressBook];
        emit importFinished();
        return;
    }
    finishImport(read.contacts);
}

void FavoritesScreenController::finishImport(const QList<VCardContact> &contacts)
{
    // A write that fails is told by the save notice, as every change's is.
    const ImportSummary summary =
        BirthdayImport::importInto(m_session.favorites, contacts, m_session.launchDate().date())
            .summary;
    // The new favorites take their place in the chosen order.
    applyOrder();
    reloadRows();
    m_importSummary = BirthdayImport::summaryText(summary, m_session.strings);
    emit importFinished();
}
