// Tells the engine the six tables, so that those of an archive of the home
// platform come out with their keys, rules and lookups. The tables of an older
// schema aren't among them: they come out as they are, for the upgrade.
#pragma once

namespace tolvek {

// Once, before the first database is opened.
void registerKnownTables();

}
