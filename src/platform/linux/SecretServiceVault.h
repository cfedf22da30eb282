// SPDX-License-Identifier: MIT
#pragma once

#include "sync/PasswordVault.h"

// The sync password in the desktop's Secret Service (gnome-keyring,
// KWallet, KeePassXC) through QtKeychain. Where none answers, every call
// fails: there is no fallback to a file.
class SecretServiceVault final : public PasswordVault
{
public:
    void
    read(const QString &account,
         std::function<void(const QString &password, const SyncProblem &problem)> done) override;
    void write(const QString &account, const QString &password,
               std::function<void(const SyncProblem &problem)> done) override;
    void remove(const QString &account,
                std::function<void(const SyncProblem &problem)> done) override;
};
