#pragma once

#include <QWidget>

#include <cstdint>

namespace plot
{

inline constexpr int kBarTwips = 380; // SetSize adds this to the requested height

/// A window that commands fill. It appears without taking the focus from the user's window, and closing hides it.
/// Position and size are in twips and clamped to 16 bits.
class OutputWindow : public QWidget
{
    Q_OBJECT

public:
    explicit OutputWindow(QWidget* parent = nullptr);

    /// Adds the bar to the height, so that getSize reports more than was set.
    void SetSize(std::int16_t pTop, std::int16_t pLeft, std::int16_t pWidth, std::int16_t pHeight);
    /// Sizes the surface as SetSize does, but keeps the window's position, even if it does not fit into 16 bits.
    void resizeSurface(std::int16_t pWidth, std::int16_t pHeight);
    void SetPosition(std::int16_t pTop, std::int16_t pLeft);
    void getPosition(std::int16_t& Top, std::int16_t& Left) const;
    void getSize(std::int16_t& Width, std::int16_t& Height) const;

    /// Shows the window above others with its last position and size, even if it was minimised.
    void showFilled();
};

} // namespace plot
