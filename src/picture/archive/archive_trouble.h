#pragma once

// Why pictures are not archived. They are published all the same.
enum class ArchiveTrouble {
    None,
    Name,    // the system's date cannot be part of a file name
    Full,    // too little room is left on the disk
    Folder,  // it is not there or cannot be written
    Silent,  // the disk does not answer
};
