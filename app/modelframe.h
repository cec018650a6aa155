#pragma once

#include <QGroupBox>

class QButtonGroup;
class QRadioButton;

namespace app
{

/// The choice of a model: one option a model, in groups.
class ModelFrame : public QGroupBox
{
    Q_OBJECT

public:
    explicit ModelFrame(QWidget* parent);

    int model() const;
    /// A number outside 1..13 does nothing.
    void choose(int model);

signals:
    void chosen(int model);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QRadioButton* makeOption(int model);
    void step(int by);

    QButtonGroup* m_options;
};

} // namespace app
