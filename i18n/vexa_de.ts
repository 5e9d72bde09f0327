<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>Meldung schließen</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>%1 erneut versuchen</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>%1 installieren</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1 abbrechen</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Der Ordner %1 kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 ist nicht erreichbar oder kein Kartenserver.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 nennt keine brauchbare Kartenversion.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>Der Server liefert %1 nicht.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>%1 vom Server ist beschädigt oder enthält keine Regionen; die alte Datei bleibt.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>%1 kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Der Ordner %1 kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>Die Sperrdatei %1 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>Ein anderes Programm (Prozess %1) arbeitet gerade mit diesen Kartendaten. Bitte erneut versuchen, wenn es fertig ist.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>Eine unterbrochene Aktualisierung wurde abgeschlossen: Die neuen Karten sind in Gebrauch.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>Eine unterbrochene Aktualisierung konnte nicht abgeschlossen werden: Die alten Karten sind in Gebrauch.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>Die unterbrochene Rückkehr zu den alten Karten ist jetzt abgeschlossen.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>Die Rückkehr zu den alten Karten konnte nicht abgeschlossen werden: Die neuen Karten sind in Gebrauch.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>Ein unterbrochenes Entfernen wurde abgeschlossen.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>Sprachdaten, die beim Entfernen beiseitegelegt wurden, sind wieder an ihrem Platz.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>Ein Austausch der Kartendaten wurde unterbrochen und kann nicht abgeschlossen werden.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>Was im Weg war, heißt jetzt %1.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>Die Kartendaten werden gerade geladen oder geändert. Bitte danach erneut versuchen.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>Der Austausch der Kartendaten konnte nicht abgeschlossen werden: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>Die Kartendaten konnten nicht ausgetauscht werden und sind unverändert: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>Die Shell hat nicht alle Ordner verschoben; der Rest wurde ohne sie verschoben.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; kann nicht an den Namen eines Datensatzes angehängt werden.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Ein Austausch der Kartendaten wurde unterbrochen. Bitte zuerst das Programm neu starten.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>Der Server antwortet seit %1&#xa0;s nicht; Abbruch.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>Eine Aktualisierung läuft gerade.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Es ist keine Sicherung vorhanden, zu der zurückgekehrt werden kann.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>Es stehen noch Installationen aus (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>Seither wurden Regionen installiert, die nicht in der Sicherung sind: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>Städteverzeichnis und Stand der Aktualisierung können nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>Eine frühere Änderung der Karten wurde unterbrochen und muss zuerst repariert werden.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>Der Name des Ordners %1 enthält Zeichen, mit denen die Befehle einer Aktualisierung nicht umgehen können.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>Es ist noch kein Katalog vorhanden.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>Die Sicherung einer früheren Aktualisierung ist noch vorhanden.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Der Stand der Aktualisierung kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>In Version %1 fehlen installierte Regionen: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>Die vorbereiteten Karten können nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>enthält %n Karte</numerusform>
            <numerusform>enthält %n Karten</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>Karte auswählen</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>Hier erscheinen ihre Größe und was sich mit ihr tun lässt.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>Kein Netzwerk</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>WLAN oder Kabel</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>Mobilfunk</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 frei</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>Der Datenträger nimmt keine Daten mehr auf. Ist er voll?</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 fehlt.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 ist im Weg und kann nicht umbenannt werden.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 meldet den Status %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 ist viel zu groß.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Unterbrochen.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 antwortet seit %2&#xa0;s nicht.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 ist nicht erreichbar: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 wird bei der Übertragung unzulässig komprimiert.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 hat sich beim Lesen geändert.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 bricht ab: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 liefert weniger Bytes als angegeben.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 liefert mehr Bytes als angegeben.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 liefert einen anderen Teil als angefordert.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>Installierte Karten</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>%1 frei auf diesem Gerät</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>%1 aktualisieren</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>Keine Karte installiert</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>Installierte Karten funktionieren ganz ohne Netzwerk. Einfach die gewünschten Regionen auswählen.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Karten auswählen</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>Karten</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>Karten werden geöffnet</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>Die Karten können nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transfers</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>%1 wurde entfernt; %2 sind wieder frei.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>Der Server antwortet nicht. Bitte später erneut versuchen.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>Vor der Suche nach neuen Karten müssen die Transfers beendet oder abgebrochen sein.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Es besteht keine Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>Die Kartenliste ist aktuell (Version %1).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>Der Server hat neuere Karten (Version %1). Die installierten bleiben bei Version %2.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>Alle Karten werden aktualisiert. Bis dahin kann keine andere Karte installiert oder entfernt werden.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>Eine Aktualisierung aller Karten ist nicht abgeschlossen. Bitte fortsetzen oder aufgeben, bevor Karten installiert oder entfernt werden.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>Die alten Karten der letzten Aktualisierung sind noch vorhanden. Bitte zuerst entfernen.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Es besteht keine Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Downloads warten auf WLAN.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>Die Karten werden bereits geändert.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>Die Karten sind noch nicht geöffnet.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>Die Kartenliste wird gerade abgerufen. Bitte warten, bis das fertig ist.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>Vor der Aktualisierung aller Karten müssen die Transfers beendet oder abgebrochen sein.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>Die alten Karten werden gerade entfernt.</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>Alte Karten</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>Aufbewahrte Version</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>Wird ermittelt</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>Alte Karten behalten</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>Zurück zu Version %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>Alte Karten entfernen</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>Sicherung entfernen</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>Zurück zu Version %1?</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>Die alten Karten kommen wieder in Gebrauch. Die neueren bleiben auf diesem Gerät, bis sie entfernt werden.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>Diese Karten wurden seitdem installiert und fehlen unter den alten: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Zurückkehren</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>Alte Karten entfernen?</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>Dadurch werden %1 frei.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>Danach ist keine Rückkehr zu Version %1 möglich.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>Wird entfernt</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>In die Ordner %1 und %2 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>Städteverzeichnis und config.cfg können nicht zu den neuen Karten kopiert werden.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>Die Datei %1 kann nicht entfernt werden.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Der Stand der Aktualisierung kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>Fortschritt noch nicht bekannt</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>Platzbedarf nach Installation</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Auf diesem Gerät</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>Download abbrechen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>Der Katalog enthält keine Region &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>%1 wird bereits installiert.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Der Katalog enthält keine brauchbare Adresse für %1.</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>%1 benötigt %2, es sind aber nur %3 frei.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>Die Liste der ausstehenden Installationen konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>%1 wird gerade nicht installiert.</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>Die Dateien von %1 werden bereits abgelegt.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>%1 ist nicht installiert.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>%1 wird gerade installiert; bitte zuerst die Installation abbrechen.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>Das Archiv von %1 enthält keine Kartenkacheln.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>Nach der Installation fehlen Dateien von %1.</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>Der Katalog enthält die Region &quot;%1&quot; nicht mehr.</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>%1 konnte nicht eingetragen werden: Die Inhaltsdatei kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>Der Server hat für %2 %1 Bytes geschickt, der Katalog nennt aber %3; es wurde nichts geändert. Liegt eine Anmeldeseite dazwischen, oder ist der Katalog veraltet?</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>Das Archiv von %1 ist beschädigt oder konnte nicht entpackt werden; es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>Die Dateien von %1 konnten nicht abgelegt werden. Ist der Speicher voll?</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>Der Server hat das Archiv von %1 verweigert.</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>Das Archiv von %1 konnte nicht heruntergeladen werden: Der Server ist nicht erreichbar oder hat es nicht.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>Die letzte Installation von %1 ist nicht fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>%1 auf diesem Gerät</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>enthält %n Karte</numerusform>
            <numerusform>enthält %n Karten</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>Manuell pausiert</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>Wartet auf WLAN</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Nicht installiert</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>In der Warteschlange</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>Wird heruntergeladen, %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Wird heruntergeladen</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>Download: %1&#xa0;%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>Download: %1&#xa0;%, noch %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Wird entpackt</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>Entpacken: %1&#xa0;%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>Dateien werden abgelegt</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Wird abgeschlossen</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>Wartet auf ein Netzwerk</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>Verfügbare Karten</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>Alle Karten</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Neue Karten suchen</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>Alle Karten durchsuchen</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>Keine Karte mit diesem Namen</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>Weniger Buchstaben oder der Name in einer anderen Sprache helfen vielleicht weiter.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>Noch keine Karten bekannt</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>Zuerst die Kartenliste vom Server abrufen. Sie ist klein; die Karten selbst werden je nach Auswahl einzeln heruntergeladen.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>Liste abrufen</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1 komplett</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 ist verschlüsselt.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1: nicht genügend Arbeitsspeicher.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>Der Inhalt von %1 kann nicht gelesen werden: Der Server liefert nur ganze Dateien.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 ist beschädigt oder kein Archiv: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 gibt nicht an, wie groß seine Dateien sind.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 enthält eine Datei, die nicht entpackt werden darf: &quot;%2&quot;.</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>%1 entfernen?</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>Dadurch werden %1 frei (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>%1 (%2) bleiben, weil andere installierte Karten sie brauchen.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>Es wird ermittelt, was dadurch frei wird</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Suche löschen</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>Inhaltsserver</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>Die Adresse, von der Karten heruntergeladen werden.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>Dies ist keine http-Adresse.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Verwenden</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>Unter %1 ist ein anderes Dateisystem eingehängt; es kann nicht entfernt werden.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>%1 kann nicht an einen sicheren Ort verschoben werden.</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>Fehler und Warnungen</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>Auch Informationen</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Kein Netzwerk</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Über WLAN oder Kabel verbunden</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>Über Mobilfunk verbunden</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>Manuell festgelegt</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>Angabe des Systems</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>Keine Angabe des Systems</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>Über Mobilfunk herunterladen</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>Kann Kosten verursachen. Aus: Downloads warten auf WLAN.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>Netzwerk manuell festlegen</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>Falls das System es nicht erkennt.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>Netzwerk vorhanden</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>Es ist WLAN oder Kabel</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Auf diesem Gerät</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>Installierte Karten</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n Karte</numerusform>
            <numerusform>%n Karten</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Freier Speicher</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>Version der Karten</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>Version der Kartenobjekte</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>Städteverzeichnis</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n Städtepaket</numerusform>
            <numerusform>%n Städtepakete</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>Inhaltsserver</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>Kartenliste</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n Karte zur Auswahl</numerusform>
            <numerusform>%n Karten zur Auswahl</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>Der Server hat neuere Karten: Version %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>Suche abbrechen</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Neue Karten suchen</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>Diese App</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Darstellung</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Alle Karten aktualisieren</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>Läuft gerade</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>Version %1 ist auf diesem Gerät</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>Version %1 wird vorbereitet</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Keine neueren Karten bekannt</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Ein Austausch der Kartendaten wurde unterbrochen. Bitte zuerst das Programm neu starten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; kann nicht an den Namen eines Datensatzes angehängt werden.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>Der Pfad %1 enthält ein Leerzeichen oder ein anderes Zeichen, mit dem die Aktualisierung nicht umgehen kann. Bitte die Kartendaten in einen Ordner mit einfachem Namen verschieben.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>Es sind keine vorbereiteten Kartendaten vorhanden.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Es ist keine Sicherung vorhanden, zu der zurückgekehrt werden kann.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>Die Sicherung einer früheren Aktualisierung ist noch vorhanden (%1). Bitte zuerst entfernen oder zu ihr zurückkehren.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>Es wird bereits eine andere Aktualisierung vorbereitet (%1). Bitte zuerst diese verwerfen.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>Der Ordner %1 fehlt.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 ist ein Link oder eine Datei; es muss ein Ordner sein.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>Unter %1 ist ein anderes Dateisystem eingehängt; es muss ein Ordner des umgebenden Dateisystems sein.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 ist den Sprachdaten im Weg.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>Der Ordner %1 ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>Unter %1 ist kein Speicherplatz mehr frei.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 fehlt oder ist beschädigt.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 fehlt, ist beschädigt oder enthält keine Regionen.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>%1 kann nicht geschrieben werden (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>Der Vermerk %1 kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>Der Vermerk %1 ist beschädigt oder stammt nicht von diesem Programm.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>Der Vermerk %1 stammt von einer neueren Version dieses Programms.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>Der Vermerk %1 ist beschädigt.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>%1 kann nicht entfernt werden (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>Kein Netzwerk. Downloads gehen weiter, sobald wieder eines da ist.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Downloads warten auf WLAN.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transfers</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Mobilfunk verwenden</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>%1 erneut versuchen</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1 abbrechen</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>Keine Transfers</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>Hier erscheinen die zur Installation ausgewählten Karten, bis sie bereit sind.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Karten auswählen</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>%1 aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>Beendete Transfers entfernen</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>Der Server hat neuere Karten: Version %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>Aktualisierung anzeigen</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Alle Karten aktualisieren</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 nennt keine brauchbare Kartenversion.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>%1 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>%1 vom Server ist beschädigt oder enthält keine Regionen.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Der Katalog enthält keine brauchbare Adresse für %1.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Unterbrochen.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>Das Archiv von %1 enthält keine Kartenkacheln.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>Die Aktualisierung wartet</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>Rückkehr zu den alten Karten</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>Die Karten werden aktualisiert</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>Alle Karten sind aktualisiert</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>Die Aktualisierung konnte nicht abgeschlossen werden</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>Neuere Karten liegen bereit</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>Eine Aktualisierung ist nicht abgeschlossen</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>Es gibt neuere Karten</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Keine neueren Karten bekannt</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>Es gibt kein Netzwerk, das sie verwenden darf. Sie geht von selbst weiter, sobald es eines gibt.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>Der Server wird nach seiner Version gefragt</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>Die Kartenliste der Version %1 wird abgerufen</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>Version %1 wird vorbereitet</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>%1 wird vorbereitet</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>Version %1 wird in Gebrauch genommen</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>Version %1 hat Version %2 abgelöst.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>Die Karten sind auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>Diese installierten Karten gibt es in Version %1 nicht mehr:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>Die Karten der Version %1 sind auf diesem Gerät. Sie können ohne Download in Gebrauch genommen werden.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>Die Aktualisierung auf Version %1 geht dort weiter, wo sie endete. Die Karten in Gebrauch bleiben bis zum Abschluss unverändert.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>Alle installierten Karten werden gemeinsam aktualisiert. Die neuen werden neben denen in Gebrauch heruntergeladen; danach ist eine Rückkehr zu den alten möglich.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>Der Server gibt Auskunft, ob es welche gibt.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Alle Karten aktualisieren</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>Wird ohne sie fortgesetzt, bleiben sie nur in den alten Karten erhalten.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>Ohne sie fortsetzen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Alle Karten aktualisieren</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>Version %1 verwenden</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Mobilfunk verwenden</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>Neuere Karten entfernen</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Aufgeben</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Neue Karten suchen</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>In Gebrauch</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Neuere</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>Auf dem Server</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Freier Speicher</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>Neuere Karten entfernen?</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>Aktualisierung aufgeben?</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>Was von Version %1 heruntergeladen wurde, wird entfernt. Die Karten in Gebrauch bleiben unverändert.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>Die Aktualisierung braucht unter %2 bis zu %1 zusätzlich zu den benutzten Karten, es sind aber nur %3 frei.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 ist nicht erreichbar oder kein Kartenserver.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 nennt keine brauchbare Kartenversion.</translation>
    </message>
</context>
</TS>
