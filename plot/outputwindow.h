#pragma once

#include <QWidget>

#include <cstdint>

namespace plot
{

inline constexpr int kBarTwips = 380; // what SetSize adds to the height that is asked for

/// A window that commands fill: it appears without taking the focus from where the user types, and closing hides it.
/// Position and size are in twips and held within 16 bits.
class OutputWindow : public QWidget
{
    Q_OBJECT

public:
    explicit OutputWindow(QWidget* parent = nullptr);

    /// The height grows by the bar, so that getSize reports more than was set.
    void SetSize(std::int16_t pTop, std::int16_t pLeft, std::int16_t pWidth, std::int16_t pHeight);
    /// Sizes the surface as SetSize does, and the window stays where it is, also farther away than 16 bits can tell.
    void resizeSurface(std::int16_t pWidth, std::int16_t pHeight);
    void SetPosition(std::int16_t pTop, std::int16_t pLeft);
    void getPosition(std::int16_t& Top, std::int16_t& Left) const;
    void getSize(std::int16_t& Width, std::int16_t& Height) const;

    /// Shows the window, also a minimised one, above others where and as large as it was last.
    void showFilled();
};

} // namespace plot
