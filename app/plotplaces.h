#pragma once

namespace app
{

class VorloMain;

/// Gives plots and tables their first titles and places.
void placePlotsAndTables(VorloMain& program);

} // namespace app
