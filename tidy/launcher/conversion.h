// A text on its way through Tidy: what Tidy is given of it, and what is made of what Tidy wrote.
#pragma once

#include "platform/result.h"
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

    // The text for Tidy; the input itself unless it is XML.
    const QByteArray &forTidy() const { return shield_ ? shield_->shielded() : input_; }

    // Tidy's output as the options mean it. Fails when Tidy lost the text, or damaged it.
    platform::Result<QByteArray> finished(const QByteArray &tidied) const;

    // Tidy's report in the words of the input.
    QByteArray told(const QByteArray &report) const;

private:
    bool isDamaged(const QByteArray &text) const;

    const QByteArray input_;
    const RunOptions options_;
    std::optional<XmlWords> words_; // of XML that is well-formed
    std::optional<XmlShield> shield_; // of XML
};

} // namespace launcher
