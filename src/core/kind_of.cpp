#include "core/kind_of.h"

TroubleKind KindOf(ServerFault fault) {
    using enum ServerAnswer::Fault;
    switch (fault) {
        case LoginRefused:
        case SignatureRefused:
        case KeyNotUsable:
        case KeyNeedsPassphrase:
            return TroubleKind::Login;
        case FolderMissing:
        case FolderRefused:
        case BucketMissing:
            return TroubleKind::Folder;
        case LocalFolderMissing:
        case LocalNotWritable:
            return TroubleKind::LocalFolder;
        case NoLocalFile:
            return TroubleKind::WorkFolder;
        case CertificateUnknown:
        case CertificateExpired:
        case CertificateWrongName:
        case CertificateChanged:
        case HostKeyUnknown:
        case HostKeyChanged:
        case HostKeyNotKept:
        case NoEncryption:
        case EncryptionNeeded:
            return TroubleKind::Identity;
        case MayNotStore:
        case Forbidden:
        case NoRoom:
        case TooLarge:
        case Locked:
        case FileMissing:
        case RenameRefused:
        case ReplaceRefused:
        case DeleteRefused:
        case DataBlocked:
        case PassiveBlocked:
        case DataFromElsewhere:
        case SessionNotResumed:
        case ConnectionLost:
        case PutNotAllowed:
            return TroubleKind::Transfer;
        default:
            return TroubleKind::Server;
    }
}
