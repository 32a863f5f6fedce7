// Tells that the system wants the program to end, as at the end of a session or when it is told to terminate.
#pragma once

#include <QObject>

namespace shell {

class EndRequest : public QObject
{
    Q_OBJECT

public:
    // From now on such a request ends nothing by itself. One object at a time.
    EndRequest();
    ~EndRequest() override;
    EndRequest(const EndRequest &) = delete;
    EndRequest &operator=(const EndRequest &) = delete;

Q_SIGNALS:
    void asked(); // from the event loop
};

} // namespace shell
