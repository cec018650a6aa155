#pragma once

namespace analysis
{

/// The message of a command that ends because a number is infinite or undefined.
inline constexpr const char* kArithmeticFault = "The Gauss-Newton calculation stopped with an arithmetic error.\r\n"
                                                "Please change the initial values and run again.";

} // namespace analysis
