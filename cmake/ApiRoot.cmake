# The program speaks to one service only; a wrong root would be found out by its users.
set(TESSARY_API_ROOT "https://tessary.example/api" CACHE STRING "Root of the service's HTTP API")
if(NOT TESSARY_API_ROOT MATCHES "^https://[^/?#@ \"\\]+(/[^/?#@ \"\\]+)*/api$")
    message(FATAL_ERROR
        "TESSARY_API_ROOT is \"${TESSARY_API_ROOT}\". It must be an HTTPS URL that ends in \"/api\", "
        "for example -DTESSARY_API_ROOT=https://video.example.com/api")
endif()
