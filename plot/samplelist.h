#pragma once

#include <QComboBox>

namespace plot
{

struct LegendEntry;

/// The legend of a plot: each sample with its colour, number and concentration. Choosing a sample requests rings around
/// its markers.
class SampleList : public QComboBox
{
    Q_OBJECT

public:
    explicit SampleList(QWidget* parent = nullptr);

    /// Afterwards no sample is selected.
    void removeSamples();
    void addSample(const LegendEntry& entry);

    void showPopup() override; // as wide as the longest text

signals:
    void sampleChosen(int number); // 0: none
};

} // namespace plot
