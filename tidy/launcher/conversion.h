// A text on its way through Tidy: what Tidy is given of it, and what is made of what Tidy wrote.
#pragma once

#include "platform/result.h"
#include "tidy/launcher/html_shield.h"
#include "tidy/launcher/run_options.h"
#include "tidy/launcher/xml_shield.h"
#include "tidy/launcher/xml_words.h"

#include <QByteArray>

#include <optional>

namespace launcher {

class Conversion
{
public:
    Conversion(const QByteArray &input, const RunOptions &options);

    // The text for Tidy.
    const QByteArray &forTidy() const { return xml_ ? xml_->shielded() : page_->shielded(); }

    // Tidy's output as the options mean it, and with the text as it was. Fails when Tidy lost some of it, or
    // damaged it.
    platform::Result<QByteArray> finished(const QByteArray &tidied) const;

    // Tidy's report in the words of the input.
    QByteArray told(const QByteArray &report) const;

private:
    platform::Result<QByteArray> finishedXml(const QByteArray &tidied) const;
    platform::Result<QByteArray> finishedPage(const QByteArray &tidied) const;

    QByteArray input_;
    const RunOptions options_;
    QByteArray mended_; // what is added to Tidy's report
    std::optional<XmlWords> words_; // of XML that is well-formed
    std::optional<XmlShield> xml_; // one of both is there
    std::optional<HtmlShield> page_;
};

} // namespace launcher
