#include "app/aboutbox.h"

#include "ui/prompter.h"

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QSysInfo>
#include <QVBoxLayout>

namespace app
{

namespace
{

QLabel* line(const QString& text, const char* name, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    return label;
}

} // namespace

QStringList systemInformationTool()
{
    static const QList<QStringList> tools{
        {"msinfo32"},    {"open", "-a", "System Information"},         {"hardinfo2"}, {"hardinfo"},
        {"kinfocenter"}, {"mate-system-monitor", "--show-system-tab"},
    };
    for (const QStringList& tool : tools) {
        const QString program = QStandardPaths::findExecutable(tool.first());
        if (!program.isEmpty())
            return QStringList{program} + tool.mid(1);
    }
    return {};
}

QString systemInformation()
{
    return QStringList{
        frmVorloAbout::tr("System: %1").arg(QSysInfo::prettyProductName()),
        frmVorloAbout::tr("Kernel: %1 %2").arg(QSysInfo::kernelType(), QSysInfo::kernelVersion()),
        frmVorloAbout::tr("Processor: %1").arg(QSysInfo::currentCpuArchitecture()),
        frmVorloAbout::tr("Toolkit: Qt %1").arg(qVersion()),
    }
        .join('\n');
}

frmVorloAbout::frmVorloAbout(ui::Prompter& prompter, QWidget* parent) : QDialog(parent), m_prompter(prompter)
{
    setWindowTitle(tr("About Vorlo"));
    auto* information = new QPushButton(tr("&System Info..."), this);
    information->setObjectName("cmdSysInfo");
    information->setAutoDefault(false);
    auto* ok = new QPushButton(tr("&OK"), this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(line(tr("Vorlo G4"), "lblTitle", this));
    layout->addWidget(line(tr("Version 2002.01.18"), "lblVersion", this));
    layout->addWidget(line(tr("Analysis of fluorescence quenching: decay curves and Stern-Volmer plots. "
                              "Written by the Vorlo developers."),
                           "lblCredits", this));
    layout->addWidget(line(tr("This program comes without any warranty. Check its results before you rely on them."),
                           "lblDisclaimer", this));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(information);
    buttons->addWidget(ok);
    layout->addLayout(buttons);

    connect(information, &QPushButton::clicked, this, &frmVorloAbout::showSystemInformation);
    connect(ok, &QPushButton::clicked, this, &QDialog::hide);
}

void frmVorloAbout::showSystemInformation()
{
    QStringList tool = systemInformationTool();
    if (tool.isEmpty() || !QProcess::startDetached(tool.takeFirst(), tool))
        m_prompter.message(systemInformation());
}

} // namespace app
