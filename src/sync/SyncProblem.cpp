// SPDX-License-Identifier: MIT
#include "sync/SyncProblem.h"

#include <QList>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Named
{
    SyncProblem::Kind kind;
    QString name;
};

const QList<Named> &names()
{
    static const QList<Named> all{
        {SyncProblem::Kind::Unreachable, u"unreachable"_s},
        {SyncProblem::Kind::LoginRefused, u"login-refused"_s},
        {SyncProblem::Kind::NoPasswordStore, u"no-password-store"_s},
        {SyncProblem::Kind::NoPassword, u"no-password"_s},
        {SyncProblem::Kind::NoAddressBook, u"no-address-book"_s},
        {SyncProblem::Kind::NotSaved, u"not-saved"_s},
        {SyncProblem::Kind::Other, u"other"_s},
    };
    return all;
}

} // namespace

QString SyncProblem::nameOf(Kind kind)
{
    for (const Named &named : names()) {
        if (named.kind == kind)
            return named.name;
    }
    return {};
}

SyncProblem::Kind SyncProblem::kindNamed(const QString &name)
{
    for (const Named &named : names()) {
        if (named.name == name)
            return named.kind;
    }
    return name.isEmpty() ? Kind::None : Kind::Other;
}
