// The table that the benchmark prints, a row at a time, and what is kept of it for the end of the run.
#pragma once

#include <QDir>
#include <QMap>
#include <QString>
#include <QStringList>

#include <initializer_list>

namespace bench {

// What a figure is compared with. An aim is the most that the figure may be of it; 0 for none.
// What has not been measured, 0, is left out.
struct Share
{
    double of;
    const char *name;
    double aim = 0;
};

// A row with a figure above an aim is marked with "!". All processes of one measurement write to one folder.
class Report
{
public:
    explicit Report(const QDir &folder) : folder_(folder) { }

    // most: the aim for the value itself; 0 for none.
    void row(const QString &what, double value, const char *unit, std::initializer_list<Share> shares = {},
             double most = 0) const;
    // Something went wrong; counts as missed.
    void note(const QString &sentence) const;

    // By name, the least of those with the same name.
    QMap<QString, double> figures() const;
    QStringList missed() const; // rows with a figure above an aim

private:
    void put(const QString &what, double value, const char *unit, const QString &shares, bool missed) const;

    QDir folder_;
};

} // namespace bench
