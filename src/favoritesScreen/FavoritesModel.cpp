// SPDX-License-Identifier: MIT
#include "favoritesScreen/FavoritesModel.h"

#include <QUrl>

void FavoritesModel::reset(QList<Favorite> favorites, CardMaker makeCard)
{
    beginResetModel();
    m_favorites = std::move(favorites);
    m_cards = QList<std::shared_ptr<const FavoriteCard>>(m_favorites.size());
    m_makeCard = std::move(makeCard);
    endResetModel();
}

void FavoritesModel::removeRow(qsizetype row)
{
    beginRemoveRows({}, int(row), int(row));
    m_favorites.removeAt(row);
    m_cards.removeAt(row);
    endRemoveRows();
}

void FavoritesModel::insertRow(qsizetype row, const Favorite &favorite)
{
    beginInsertRows({}, int(row), int(row));
    m_favorites.insert(row, favorite);
    m_cards.insert(row, nullptr);
    endInsertRows();
}

void FavoritesModel::updateRow(qsizetype row, const Favorite &favorite)
{
    m_favorites[row] = favorite;
    m_cards[row].reset();
    emit dataChanged(index(int(row)), index(int(row)));
}

int FavoritesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_favorites.size());
}

const FavoriteCard &FavoritesModel::cardAt(qsizetype row) const
{
    std::shared_ptr<const FavoriteCard> &card = m_cards[row];
    if (!card)
        card = std::make_shared<const FavoriteCard>(m_makeCard(m_favorites.at(row), row));
    return *card;
}

QVariant FavoritesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_favorites.size())
        return {};
    const FavoriteCard &card = cardAt(index.row());
    switch (role) {
    case NameRole:
        return card.name;
    case BirthdayRole:
        return card.birthdayText;
    case AgeRole:
        return card.age ? QString::number(*card.age) : QString();
    case SignImageRole:
        if (!card.readable)
            return QUrl();
        return QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/screenBase/images/") + card.signKey +
                    QStringLiteral(".svg"));
    case StarRole:
        return card.star;
    case SpokenRole:
        return card.spoken;
    default:
        return {};
    }
}

QHash<int, QByteArray> FavoritesModel::roleNames() const
{
    return {{NameRole, "name"},           {BirthdayRole, "birthday"}, {AgeRole, "age"},
            {SignImageRole, "signImage"}, {StarRole, "star"},         {SpokenRole, "spoken"}};
}
