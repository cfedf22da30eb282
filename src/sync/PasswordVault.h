// SPDX-License-Identifier: MIT
#pragma once

#include "sync/SyncProblem.h"

#include <QString>
#include <functional>

// Where the sync account's password is kept: the desktop's Secret Service
// (platform/linux), never a file Tavlo writes. Every call answers later,
// through its callback, with an empty problem on success: a missing
// store is NoPasswordStore, a password never kept NoPassword.
class PasswordVault
{
public:
    virtual ~PasswordVault() = default;

    virtual void
    read(const QString &account,
         std::function<void(const QString &password, const SyncProblem &problem)> done) = 0;
    virtual void write(const QString &account, const QString &password,
                       std::function<void(const SyncProblem &problem)> done) = 0;
    // Removing a password that is not there succeeds.
    virtual void remove(const QString &account,
                        std::function<void(const SyncProblem &problem)> done) = 0;

    // The name the password of `user` at `addressBook` is kept under.
    static QString accountName(const QString &user, const QString &addressBook)
    {
        return user + u'@' + addressBook;
    }
};
