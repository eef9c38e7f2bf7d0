list(APPEND TAVIK_CORE_SOURCES
    service/servicecheck.cpp
    service/autoplace.cpp
    service/serviceeditorrules.cpp
    service/servicefile.cpp
    service/servicefiles.cpp
    service/servicerename.cpp
    service/serviceuses.cpp
    service/servicejson.cpp
    service/servicefromjson.cpp
    service/servicesentences.cpp
)
# The service editor window, one file per part: pages, the service, a sentence, the files.
list(APPEND TAVIK_UI_SOURCES
    service/frmdienst.cpp
    service/frmdienstexport.cpp
    service/frmdienstfiles.cpp
    service/frmdienstpages.cpp
    service/frmdienstservice.cpp
    service/frmdienstsentence.cpp
    service/frmdienstundo.cpp
    service/frmdienstwatch.cpp
    service/sentencetimeline.cpp
    service/frmdiensttimeline.cpp
    service/frmdiensttexts.cpp
    service/frmdienstmissing.cpp
)
