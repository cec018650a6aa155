#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace ui
{

/// Everything modal goes through here, so that tests can answer for the user.
class Prompter
{
public:
    virtual ~Prompter() = default;
    virtual void message(const QString& text) = 0;
    virtual std::optional<QString> fileToOpen() = 0; // nullopt: cancelled
    virtual std::optional<QString> fileToSave() = 0; // nullopt: cancelled
};

} // namespace ui
