#include "document_maker.h"

namespace bench {

namespace {

QByteArray record(int number)
{
    const QByteArray n = QByteArray::number(number);
    return "  <book id=\"bk" + n
        + "\" lang=\"en\">\n"
          "    <author>Gambardella, Matthew "
        + QByteArray::number(number * 7)
        + "</author>\n"
          "    <title>Developer&apos;s guide, volume "
        + n
        + "</title>\n"
          "    <price currency='EUR'>"
        + QByteArray::number(number % 97)
        + ".95</price>\n"
          "    <!-- shelf "
        + QByteArray::number(number % 13)
        + " -->\n"
          "    <description>An in-depth look at creating applications\n"
          "      with <em>markup</em>, for readers of all ages.</description>\n"
          "  </book>\n";
}

} // namespace

QByteArray makeCatalogue(qsizetype bytes)
{
    QByteArray text;
    text.reserve(bytes + 1000);
    text += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<catalogue>\n";
    for (int number = 1; text.size() < bytes; ++number)
        text += record(number);
    text += "</catalogue>\n";
    text.squeeze();
    return text;
}

} // namespace bench
