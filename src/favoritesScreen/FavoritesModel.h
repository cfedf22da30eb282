// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoriteCard.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <memory>

// The favorites as list rows. A row's card is worked out when the view first
// asks for it, so a long list costs only the rows on screen.
class FavoritesModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        BirthdayRole,
        AgeRole,
        SignImageRole,
        StarRole,
        SpokenRole
    };

    using CardMaker = std::function<FavoriteCard(const Favorite &, qsizetype)>;

    explicit FavoritesModel(QObject *parent = nullptr) : QAbstractListModel(parent) {}

    void reset(QList<Favorite> favorites, CardMaker makeCard);
    void removeRow(qsizetype row);
    void insertRow(qsizetype row, const Favorite &favorite);
    void updateRow(qsizetype row, const Favorite &favorite);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const FavoriteCard &cardAt(qsizetype row) const;

    QList<Favorite> m_favorites;
    // Made as rows are first shown; a pointer each, so that a long list
    // costs little until then.
    mutable QList<std::shared_ptr<const FavoriteCard>> m_cards;
    CardMaker m_makeCard;
};
