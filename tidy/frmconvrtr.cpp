#include "tidy/frmconvrtr.h"

#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/window_size.h"
#include "platform/files/file_helpers.h"
#include "tidy/config_files.h"
#include "tidy/convert_proposal.h"
#include "tidy/convert_questions.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

namespace tidy {

namespace {

constexpr int usualColumns = 88;

// What the two files differ in.
struct FileSide
{
    const char *filter;
    const char *missing;
    const char *accessibleName;
};

constexpr FileSide sides[] = {
    {"XML Documents (*.xml)|*.xml|All files (*.*)|*.*", "You need to select a valid XML file!", "XML file"},
    {"XSLT Stylesheets (*.xsl;*.xslt)|*.xsl;*.xslt|All files (*.*)|*.*",
     "You need to select a valid XSL file!", "XSL file"},
};

template <typename Control>
Control *named(const QString &name, Control *control)
{
    control->setObjectName(name);
    return control;
}

QComboBox *list(const QString &name, const QStringList &items, QWidget *parent)
{
    auto *box = named(name, new QComboBox(parent));
    box->addItems(items);
    return box;
}

QPushButton *button(const QString &name, const QString &caption, QWidget *parent)
{
    auto *made = named(name, new QPushButton(caption, parent));
    made->setAutoDefault(false);
    return made;
}

QLabel *captionFor(QWidget *control, const QString &caption, QWidget *parent)
{
    auto *label = new QLabel(caption, parent);
    label->setBuddy(control);
    return label;
}

QPlainTextEdit *parametersField(QWidget &parent)
{
    auto *field = named(QStringLiteral("txtparameters"), new QPlainTextEdit(&parent));
    field->setAccessibleName(QStringLiteral("Parameters of the style sheet"));
    field->setPlaceholderText(QStringLiteral("name=value, one a line"));
    field->setTabChangesFocus(true);
    field->setLineWrapMode(QPlainTextEdit::NoWrap);
    field->setFixedHeight(3 * parent.fontMetrics().lineSpacing() + 12);
    return field;
}

// How far the caption of an option button stands in.
int radioIndent(const QWidget &widget)
{
    const QStyle &style = *widget.style();
    return style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, &widget)
        + style.pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, &widget);
}

} // namespace

frmconvrtr::frmconvrtr(const ConvertServices &services, QWidget *parent)
    : QDialog(parent), services_(services),
      process_(files::joinPath(services.programFolder, QStringLiteral("\\tdyex\\transformer.exe"))),
      offered_(kindOfText(services.currentText()))
{
    setObjectName(QStringLiteral("frmconvrtr"));
    setWindowTitle(QStringLiteral("Convert and Tidy"));
    setWindowModality(Qt::WindowModal);
    makeControls();
    layOut();
    connectControls();
    preselect();
    enableControls();
    optjob[optjob[1]->isChecked() ? 1 : 0]->setFocus();
}

// What was chosen last, where it fits the text; else what the text itself is.
void frmconvrtr::preselect()
{
    const ConvertChoices last = services_.choices ? *services_.choices : ConvertChoices();
    const bool alike = last.made && last.offered == offered_;
    cmbinput->setCurrentIndex(int(alike ? last.input : offered_));
    cmboutput->setCurrentIndex(alike ? int(last.output) : int(offered_));
    optjob[last.transforms ? 1 : 0]->setChecked(true);
    optxml[last.xmlIsCurrent ? 0 : 1]->setChecked(true);
    const QString named = namedStyleSheet(services_.currentText(), services_.currentPath());
    txtfile[0]->setText(last.files[0]);
    txtfile[1]->setText(named.isEmpty() ? last.files[1] : named);
    txtparameters->setPlainText(last.parameters);
}

void frmconvrtr::keepChoices()
{
    if (services_.choices)
        *services_.choices = {true,
                              optjob[1]->isChecked(),
                              optxml[0]->isChecked(),
                              offered_,
                              InputKind(cmbinput->currentIndex()),
                              OutputKind(cmboutput->currentIndex()),
                              {txtfile[0]->text(), txtfile[1]->text()},
                              txtparameters->toPlainText()};
}

void frmconvrtr::makeControls()
{
    optjob[0] = named(QStringLiteral("optjob0"),
                      new QRadioButton(QStringLiteral("Convert current code into Well-formed Code:"), this));
    optjob[1] = named(QStringLiteral("optjob1"),
                      new QRadioButton(QStringLiteral("Convert XML + XSL into HTML:"), this));
    cmbinput = list(QStringLiteral("cmbinput"),
                    {QStringLiteral("xml"), QStringLiteral("html"), QStringLiteral("xhtml")}, this);
    cmboutput = list(QStringLiteral("cmboutput"),
                     {QStringLiteral("Well-formed xml"), QStringLiteral("Well-formed html"),
                      QStringLiteral("Well-formed xhtml")},
                     this);
    optxml[0] = named(QStringLiteral("optxml0"), new QRadioButton(QStringLiteral("Current Code."), this));
    optxml[1] = named(QStringLiteral("optxml1"), new QRadioButton(QStringLiteral("Select file:"), this));
    for (int index : {0, 1}) {
        txtfile[index] = named(QStringLiteral("txtfile%1").arg(index), new QLineEdit(this));
        txtfile[index]->setAccessibleName(QString::fromLatin1(sides[index].accessibleName));
        cmdbrowse[index] = button(QStringLiteral("cmdbrowse%1").arg(index), QStringLiteral("..."), this);
        cmdbrowse[index]->setAccessibleName(QStringLiteral("Browse for the ")
                                            + QString::fromLatin1(sides[index].accessibleName));
        cmdbrowse[index]->setFixedWidth(cmdbrowse[index]->sizeHint().height() * 3 / 2);
        cmdbrowse[index]->setToolTip(cmdbrowse[index]->accessibleName());
    }
    txtparameters = parametersField(*this);
    lblxsl = named(QStringLiteral("lblxsl"), new QLabel(this));
    lblxsl->setContentsMargins(radioIndent(*this), 0, 0, 0);
    lblfailure = named(QStringLiteral("lblfailure"), new QLabel(this));
    lblfailure->setWordWrap(true);
    lblfailure->setTextFormat(Qt::PlainText);
    lblfailure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    prgwork = named(QStringLiteral("prgwork"), new QProgressBar(this));
    prgwork->setRange(0, 0); // nobody knows how much there is to do
    prgwork->setFormat(QStringLiteral("The style sheet is at work"));
    OKButton = button(QStringLiteral("OKButton"), QStringLiteral("Convert"), this);
    CancelButton = button(QStringLiteral("CancelButton"), QStringLiteral("Cancel"), this);
    OKButton->setDefault(true);
}

void frmconvrtr::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(optjob[0]);
    layout->addWidget(jobs_[0] = firstJob());
    layout->addSpacing(layout->spacing());
    layout->addWidget(optjob[1]);
    layout->addWidget(jobs_[1] = secondJob());
    layout->addWidget(lblfailure);
    layout->addWidget(prgwork);
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    buttons->addStretch();
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    lblfailure->hide();
    prgwork->hide();
    resize(dialogs::sizeInCharacters(*this, usualColumns, 0).width(), sizeHint().height());
}

// A job's controls stand under its button, indented by the button's own circle.
QWidget *frmconvrtr::firstJob()
{
    auto *job = new QWidget(this);
    auto *grid = new QGridLayout(job);
    grid->setContentsMargins(radioIndent(*this), 0, 0, 0);
    grid->setColumnStretch(1, 1);
    grid->addWidget(captionFor(cmbinput, QStringLiteral("Current Code:"), job), 0, 0);
    grid->addWidget(cmbinput, 0, 1);
    grid->addWidget(captionFor(cmboutput, QStringLiteral("Output Code:"), job), 1, 0);
    grid->addWidget(cmboutput, 1, 1);
    return job;
}

QWidget *frmconvrtr::secondJob()
{
    auto *job = new QWidget(this);
    auto *grid = new QGridLayout(job);
    grid->setContentsMargins(jobs_[0]->layout()->contentsMargins());
    grid->setColumnStretch(2, 1);
    grid->addWidget(new QLabel(QStringLiteral("XML:"), job), 0, 0);
    grid->addWidget(optxml[0], 0, 1, 1, 2);
    grid->addWidget(optxml[1], 1, 1);
    grid->addWidget(txtfile[0], 1, 2);
    grid->addWidget(cmdbrowse[0], 1, 3);
    grid->addWidget(new QLabel(QStringLiteral("XSL:"), job), 2, 0);
    grid->addWidget(lblxsl, 2, 1);
    grid->addWidget(txtfile[1], 2, 2);
    grid->addWidget(cmdbrowse[1], 2, 3);
    grid->addWidget(captionFor(txtparameters, QStringLiteral("Parameters:"), job), 3, 0, 1, 2, Qt::AlignTop);
    grid->addWidget(txtparameters, 3, 2);
    auto *source = new QButtonGroup(job);
    source->addButton(optxml[0]);
    source->addButton(optxml[1]);
    auto *jobs = new QButtonGroup(this);
    jobs->addButton(optjob[0]);
    jobs->addButton(optjob[1]);
    return job;
}

void frmconvrtr::connectControls()
{
    for (QRadioButton *option : {optjob[0], optxml[0]})
        connect(option, &QRadioButton::toggled, this, &frmconvrtr::enableControls);
    for (int index : {0, 1}) {
        connect(cmdbrowse[index], &QPushButton::clicked, this, [this, index] { cmdbrowse_Click(index); });
        connect(txtfile[index], &QLineEdit::textChanged, this, [this] { fail({}); });
    }
    connect(txtparameters, &QPlainTextEdit::textChanged, this, [this] { fail({}); });
    connect(OKButton, &QPushButton::clicked, this, &frmconvrtr::accept);
    connect(CancelButton, &QPushButton::clicked, this, &frmconvrtr::reject);
    connect(&process_, &TransformProcess::finished, this, &frmconvrtr::transformed);
}

void frmconvrtr::enableControls()
{
    const bool xmlIsCurrent = optxml[0]->isChecked();
    jobs_[0]->setEnabled(optjob[0]->isChecked());
    jobs_[1]->setEnabled(optjob[1]->isChecked());
    cmdbrowse[0]->setEnabled(!xmlIsCurrent);
    txtfile[1]->setEnabled(xmlIsCurrent);
    cmdbrowse[1]->setEnabled(xmlIsCurrent);
    lblxsl->setText(xmlIsCurrent ? QStringLiteral("Select file:") : QStringLiteral("Current Code."));
    lblxsl->setAlignment(Qt::AlignVCenter | (xmlIsCurrent ? Qt::AlignLeft : Qt::AlignHCenter));
    fail({});
}

void frmconvrtr::accept()
{
    if (process_.isRunning())
        return;
    fail({});
    if (optjob[0]->isChecked())
        rnfrst();
    else
        startTransformation();
}

void frmconvrtr::reject()
{
    if (process_.isRunning())
        process_.cancel();
    else
        QDialog::reject();
}

void frmconvrtr::rnfrst()
{
    const auto written = writeConversionOptions(services_.programFolder, InputKind(cmbinput->currentIndex()),
                                                OutputKind(cmboutput->currentIndex()));
    if (!written)
        return fail(written.reason());
    keepChoices();
    services_.runTidy(services_.currentText());
    QDialog::accept();
}

void frmconvrtr::startTransformation()
{
    role_ = optxml[0]->isChecked() ? CurrentTextIs::Xml : CurrentTextIs::StyleSheet;
    const int side = role_ == CurrentTextIs::Xml ? 1 : 0;
    if (refuseMissingFile(side))
        return;
    auto parameters = sheetParameters(txtparameters->toPlainText());
    if (!parameters)
        return fail(parameters.reason());
    auto job = jobWithFile(role_, {services_.currentText(), services_.currentPath()}, txtfile[side]->text());
    if (!job)
        return fail(job.reason());
    keepChoices();
    job_ = std::move(*job);
    job_.parameters = std::move(*parameters);
    job_.licence.files = services_.allowedFiles();
    process_.start(job_);
    setAtWork(true);
}

// What is chosen stays as it is until the style sheet has come to its end.
void frmconvrtr::setAtWork(bool atWork)
{
    for (QWidget *control : {static_cast<QWidget *>(optjob[0]), static_cast<QWidget *>(optjob[1]), jobs_[1],
                             static_cast<QWidget *>(OKButton)})
        control->setEnabled(!atWork);
    prgwork->setVisible(atWork);
    if (atWork)
        CancelButton->setFocus();
    else
        OKButton->setFocus();
}

void frmconvrtr::transformed(const Transformation &done)
{
    setAtWork(false);
    services_.showMessages(messagesOfCurrent(
        done.messages, role_, role_ == CurrentTextIs::Xml ? job_.styleSheet.path : job_.document.path));
    if (done.markup) {
        if (takeResult(*done.markup))
            QDialog::accept();
    } else if (grantsWhatLacked(services_.dialogs, done, job_.licence)) {
        services_.allowFiles(job_.licence.files);
        process_.start(job_);
        setAtWork(true);
    } else {
        fail(done.markup.reason());
    }
}

bool frmconvrtr::takeResult(const QByteArray &markup)
{
    const auto written = writeTransformationOptions(services_.programFolder);
    if (written)
        services_.runTidyOnResult(markup, job_.document.path);
    else
        fail(written.reason());
    return written.ok();
}

bool frmconvrtr::refuseMissingFile(int index)
{
    const QString file = txtfile[index]->text();
    if (!file.isEmpty() && files::fileExists(file))
        return false;
    services_.dialogs.message(dialogs::Icon::Information, dialogs::Buttons::Ok,
                              QString::fromLatin1(sides[index].missing));
    cmdbrowse_Click(index);
    return true;
}

// Asked again until there is such a file, or the question is dismissed.
void frmconvrtr::cmdbrowse_Click(int index)
{
    QString path;
    do {
        path = services_.dialogs.openFile(QStringLiteral("Open"), QString::fromLatin1(sides[index].filter));
        if (path.isEmpty())
            return;
    } while (!files::fileExists(path));
    txtfile[index]->setText(path);
}

void frmconvrtr::fail(const QString &reason)
{
    lblfailure->setText(reason);
    lblfailure->setVisible(!reason.isEmpty());
    if (reason.isEmpty() || !isVisible())
        return;
    layout()->activate(); // makes room for the line, and no more
    resize(dialogs::withinScreen(*this, {width(), qMax(height(), layout()->totalHeightForWidth(width()))}));
}

} // namespace tidy
