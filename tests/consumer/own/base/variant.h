// The program's own, called like one of the library's.
#pragma once

using OwnVariant = int;
