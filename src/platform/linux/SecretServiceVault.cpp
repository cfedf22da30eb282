// SPDX-License-Identifier: MIT
#include "platform/linux/SecretServiceVault.h"

#include <qt6keychain/keychain.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"Tavlo CardDAV sync"_s;

SyncProblem problemOf(const QKeychain::Job &job)
{
    if (job.error() == QKeychain::NoError)
        return {};
    if (job.error() == QKeychain::NoBackendAvailable || job.error() == QKeychain::AccessDenied ||
        job.error() == QKeychain::AccessDeniedByUser)
        return {SyncProblem::Kind::NoPasswordStore,
                u"no Secret Service to keep the password in (%1)"_s.arg(job.errorString())};
    return SyncProblem::other(u"the Secret Service failed: %1"_s.arg(job.errorString()));
}

template <typename Job>
Job *newJob(const QString &account)
{
    auto *job = new Job(service);
    job->setAutoDelete(true);
    // Never a file of QtKeychain's own beside Tavlo's.
    job->setInsecureFallback(false);
    job->setKey(account);
    return job;
}

} // namespace

void SecretServiceVault::read(
    const QString &account,
    std::function<void(const QString &password, const SyncProblem &problem)> done)
{
    auto *job = newJob<QKeychain::ReadPasswordJob>(account);
    QObject::connect(job, &QKeychain::Job::finished, job, [job, done = std::move(done)] {
        if (job->error() == QKeychain::EntryNotFound)
            return done({}, {SyncProblem::Kind::NoPassword,
                             u"no password is kept for the account; run tavlo sync setup again"_s});
        done(job->textData(), problemOf(*job));
    });
    job->start();
}

void SecretServiceVault::write(const QString &account, const QString &password,
                               std::function<void(const SyncProblem &problem)> done)
{
    auto *job = newJob<QKeychain::WritePasswordJob>(account);
    job->setTextData(password);
    QObject::connect(job, &QKeychain::Job::finished, job,
                     [job, done = std::move(done)] { done(problemOf(*job)); });
    job->start();
}

void SecretServiceVault::remove(const QString &account,
                                std::function<void(const SyncProblem &problem)> done)
{
    auto *job = newJob<QKeychain::DeletePasswordJob>(account);
    QObject::connect(job, &QKeychain::Job::finished, job, [job, done = std::move(done)] {
        done(job->error() == QKeychain::EntryNotFound ? SyncProblem() : problemOf(*job));
    });
    job->start();
}
