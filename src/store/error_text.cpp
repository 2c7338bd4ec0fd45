#include "store/error_text.h"

#include <cerrno>

namespace vt {

std::string ErrorText(int errno_value) {
    switch (errno_value) {
        case 0:
            return "sin error";
        case ENOSPC:
        case EDQUOT:
            return "disco lleno";
        case EACCES:
        case EPERM:
            return "permiso denegado";
        case EROFS:
            return "disco de solo lectura";
        case ENOENT:
            return "no existe";
        case ENOTDIR:
            return "no es una carpeta";
        case EISDIR:
            return "es una carpeta";
        case EEXIST:
            return "ya existe";
        case ENAMETOOLONG:
            return "nombre demasiado largo";
        case EIO:
            return "error de lectura o escritura en el disco";
        case EMFILE:
        case ENFILE:
            return "demasiados archivos abiertos";
        case EBUSY:
        case ETXTBSY:
            return "archivo en uso";
        case EINVAL:
            return "no es un archivo válido";
        case ELOOP:
            return "demasiados enlaces simbólicos";
        case EFBIG:
            return "archivo demasiado grande";
        default:
            return "error del sistema " + std::to_string(errno_value);
    }
}

std::string ErrorText(std::error_code error) {
    if (error.category() == std::generic_category() || error.category() == std::system_category()) {
        return ErrorText(error.value());
    }
    return "error " + std::to_string(error.value());
}

}  // namespace vt
