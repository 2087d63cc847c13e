#pragma once

// Whether the system lets this process open what the steps of a picture open at most at a time:
// files, sockets, pipes. Without any nothing is to be begun: each step would fail with words that
// mislead, and a thread that cannot open what it waits by ends the program.
[[nodiscard]] bool FilesLeft();
