// A program folder with the real Tidy in it, for one test.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

class ExchangeFolder
{
public:
    ExchangeFolder()
    {
        QDir(path()).mkdir(QStringLiteral("tdyex"));
        QFile::copy(QStringLiteral(XE_TIDY), at("tidy.exe"));
        QFile::copy(QStringLiteral(XE_LAUNCHER), at("proclltidy.exe"));
        for (const char *name : {"default.tidy", "default2.tidy"})
            QFile::copy(QStringLiteral(XE_SHARE "/") + QString::fromLatin1(name), at(name));
    }

    QString path() const { return folder_.path(); }
    QString at(const char *name) const
    {
        return path() + QStringLiteral("/tdyex/") + QString::fromLatin1(name);
    }
    bool has(const char *name) const { return QFile::exists(at(name)); }

    QByteArray content(const char *name) const
    {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    void write(const char *name, const QByteArray &text) const
    {
        QFile file(at(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("The exchange folder cannot be written.");
    }

    // In place of Tidy, a shell script that finds the names of its output and messages in $out and $err, and
    // that of its input in $1.
    void fake(const QByteArray &script) const
    {
        QFile::remove(at("tidy.exe"));
        write("tidy.exe",
              "#!/bin/sh\nwhile [ $# -gt 1 ]; do case $1 in --output-file) out=$2;; --error-file) err=$2;; "
              "esac; "
              "shift; done\nexec </dev/null\n"
                  + script);
        QFile::setPermissions(at("tidy.exe"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QTemporaryDir folder_;
};
