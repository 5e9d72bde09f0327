<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fi">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>Sulje viesti</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>Yritä uudelleen: %1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>Asenna %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Peruuta %1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>Odota hetki</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Kansiota %1 ei voi luoda.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 ei vastaa tai ei ole karttapalvelin.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 ei ilmoita kelvollista karttaversiota.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>Palvelin ei toimita tiedostoa %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>Palvelimen tiedosto %1 on vioittunut tai siinä ei ole alueita; vanha jää käyttöön.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Tiedostoa %1 ei voi kirjoittaa.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Peruuta</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Kansiota %1 ei voi luoda.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>Lukkotiedostoa %1 ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>Toinen ohjelma (prosessi %1) käsittelee näitä karttatietoja. Yritä uudelleen, kun se on valmis.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>Kesken jäänyt päivitys vietiin loppuun: uudet kartat ovat käytössä.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>Kesken jäänyttä päivitystä ei voitu viedä loppuun: vanhat kartat ovat käytössä.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>Paluu vanhoihin karttoihin jäi kesken ja on nyt viety loppuun.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>Paluuta vanhoihin karttoihin ei voitu viedä loppuun: uudet kartat ovat käytössä.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>Kesken jäänyt poisto vietiin loppuun.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>Poiston ajaksi siirretyt äänitiedot ovat taas paikoillaan.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>Karttatietojen vaihto jäi kesken, eikä sitä voi viedä loppuun.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>Tiellä ollut kohde on nyt nimeltään %1.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>Karttatietoja ladataan tai muutetaan. Yritä uudelleen, kun se on valmis.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>Karttatietojen vaihtoa ei voitu viedä loppuun: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>Karttatietoja ei voitu vaihtaa, ja ne ovat ennallaan: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>Komentotulkki ei siirtänyt kaikkia kansioita; loput siirrettiin ilman sitä.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; ei kelpaa tietojoukon nimen päätteeksi.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Karttatietojen vaihto jäi kesken. Käynnistä ohjelma ensin uudelleen.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>Palvelin ei ole vastannut %1&#xa0;sekuntiin; yritys lopetetaan.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>Päivitys on käynnissä.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Varmuuskopiota, johon voisi palata, ei ole.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>Asennuksia on odottamassa (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>Sen jälkeen on asennettu alueita, joita ei ole varmuuskopiossa: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>Kaupunkihakemistoa ja päivityksen tilaa ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>Karttojen aiempi muutos jäi kesken ja on ensin korjattava.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>Kansion %1 nimessä on merkkejä, joita päivityksen komennot eivät osaa käsitellä.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>Luetteloa ei vielä ole.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>Aiemman päivityksen varmuuskopio on yhä tallessa.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Päivityksen tilaa ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>Versiosta %1 puuttuu asennettuja alueita: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>Valmisteltuja karttoja ei voi kirjoittaa.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>sisältää %n kartan</numerusform>
            <numerusform>sisältää %n karttaa</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>Valitse kartta</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>Sen koko ja toiminnot näkyvät tässä.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>Ei verkkoa</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi tai kaapeli</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>Mobiiliverkko</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 vapaana</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>Levylle ei voi enää kirjoittaa. Onko se täynnä?</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 puuttuu.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 on tiellä, eikä sitä voi nimetä uudelleen.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 antaa tilakoodin %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 on aivan liian suuri.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Keskeytetty.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 ei ole vastannut %2&#xa0;sekuntiin.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>Kohteeseen %1 ei saada yhteyttä: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 pakataan siirron aikana, vaikka se ei ole sallittua.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 on muuttunut lukemisen aikana.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 katkeaa kesken: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 antaa vähemmän tavuja kuin ilmoittaa.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 antaa enemmän tavuja kuin ilmoittaa.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 antaa eri osan kuin pyydettiin.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>Asennetut kartat</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>%1 vapaana tässä laitteessa</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Päivitä %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Poista %1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>Yhtään karttaa ei ole asennettu</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>Asennetut kartat toimivat ilman verkkoyhteyttä. Valitse tarvitsemasi alueet.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Valitse karttoja</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>Kartat</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>Avataan karttoja</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>Karttoja ei voi avata</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Yritä uudelleen</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Asennetut</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Siirrot</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Asetukset</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>%1 on poistettu; tilaa vapautui %2.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>Palvelin ei vastaa. Yritä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>Anna siirtojen päättyä tai peruuta ne ennen uusien karttojen etsimistä.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Verkkoyhteyttä ei ole.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>Karttaluettelo on ajan tasalla (versio %1).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>Palvelimella on uudempia karttoja (versio %1). Asennetut pysyvät versiossa %2.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>Kaikkia karttoja päivitetään. Muita karttoja ei voi asentaa eikä poistaa, ennen kuin se on valmis.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>Kaikkien karttojen päivitys on kesken. Jatka sitä tai luovu siitä, ennen kuin asennat tai poistat karttoja.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>Edellisen päivityksen vanhat kartat ovat vielä tallessa. Poista ne ensin.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Verkkoyhteyttä ei ole.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Lataukset odottavat Wi‑Fi-yhteyttä.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>Karttoja muutetaan jo.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>Karttoja ei ole vielä avattu.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>Karttaluetteloa haetaan. Odota, kunnes se on valmis.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>Anna siirtojen valmistua tai peru ne, ennen kuin päivität kaikki kartat.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>Vanhoja karttoja poistetaan.</translation>
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
        <translation>Vanhat kartat</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>Säilytetty versio</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Koko</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>Mitataan</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>Säilytä vanhat kartat</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>Palaa versioon %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>Poista vanhat kartat</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>Poista varmuuskopio</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>Palataanko versioon %1?</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>Vanhat kartat otetaan taas käyttöön. Uudemmat pysyvät tällä laitteella, kunnes poistat ne.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>Nämä kartat on asennettu sen jälkeen, eivätkä ne ole vanhojen joukossa: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Palaa</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>Poistetaanko vanhat kartat?</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>Tämä vapauttaa %1.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>Sen jälkeen versioon %1 ei voi palata.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Poista</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>Poistetaan</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Takaisin</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>Kansioihin %1 ja %2 ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>Kaupunkihakemistoa ja tiedostoa config.cfg ei voi kopioida uusiin karttoihin.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>Tiedostoa %1 ei voi poistaa.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Päivityksen tilaa ei voi kirjoittaa.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>Edistyminen ei ole vielä tiedossa</translation>
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
        <translation>Ladattavaa</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>Tilantarve asennettuna</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Tässä laitteessa</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>Peruuta lataus</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Poista</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Yritä uudelleen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Päivitä</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Asenna</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>Luettelossa ei ole aluetta &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>Alueen %1 asennus on jo käynnissä.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Luettelossa ei ole kelvollista osoitetta alueelle %1.</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>%1 vie tilaa %2, mutta vapaana on vain %3.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>Odottavien asennusten luetteloa ei voitu kirjoittaa.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>Alueen %1 asennus ei ole käynnissä.</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>Alueen %1 tiedostoja siirretään jo paikoilleen.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>Aluetta %1 ei ole asennettu.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>Alueen %1 asennus on käynnissä; peruuta se ensin.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>Alueen %1 arkistossa ei ole karttaruutuja.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>Alueen %1 tiedostoja puuttuu asennuksen jälkeen.</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>Luettelossa ei ole enää aluetta &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>Aluetta %1 ei voitu kirjata: sisältötiedostoa ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>Palvelin lähetti alueelle %2 %1 tavua, mutta luettelon mukaan koko on %3; mitään ei muutettu. Onko välissä kirjautumissivu, tai onko luettelo vanha?</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>Alueen %1 arkisto on vioittunut tai sitä ei voitu purkaa; mitään ei muutettu.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>Alueen %1 tiedostoja ei voitu siirtää paikoilleen. Onko tallennustila täynnä?</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>Palvelin kieltäytyi lähettämästä alueen %1 arkistoa.</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>Alueen %1 arkistoa ei voitu ladata: palvelimeen ei saada yhteyttä tai sillä ei ole arkistoa.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>Kohteen %1 viimeisin asennus ei epäonnistunut.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>Asennettu</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>%1 tässä laitteessa</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>sisältää %n kartan</numerusform>
            <numerusform>sisältää %n karttaa</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>Sulje</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>Keskeytetty pyynnöstä</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>Odottaa Wi‑Fi-yhteyttä</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Ei asennettu</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>Odottaa vuoroaan</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>Ladataan, %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Ladataan</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>Ladataan, %1&#xa0;%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>Ladataan, %1&#xa0;%, jäljellä %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Puretaan</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>Puretaan, %1&#xa0;%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>Siirretään tiedostoja paikoilleen</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Viimeistellään</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Asennettu</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Peruutettu</translation>
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
        <translation>Odottaa verkkoyhteyttä</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>Ladattavat kartat</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>Kaikki kartat</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Etsi uusia karttoja</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>Hae kaikista kartoista</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>Tämän nimistä karttaa ei ole</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>Kokeile vähemmillä kirjaimilla tai nimellä toisella kielellä.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>Karttoja ei vielä tunneta</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>Nouda ensin karttaluettelo palvelimelta. Se on pieni; itse kartat ladataan yksitellen valintasi mukaan.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>Nouda luettelo</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1 kokonaan</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Tiedot</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Asenna</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 on salattu.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1: muisti ei riitä.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>Arkiston %1 sisältöä ei voi luetella: palvelin antaa vain kokonaisia tiedostoja.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 on vioittunut tai ei ole arkisto: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 ei kerro, kuinka suuria sen tiedostot ovat.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 sisältää tiedoston, jota ei saa purkaa: &quot;%2&quot;.</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>Poistetaanko %1?</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>Tilaa vapautuu %1 (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n tiedosto</numerusform>
            <numerusform>%n tiedostoa</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>%1 (%2) säilytetään, koska muut asennetut kartat tarvitsevat niitä.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Poista</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>Selvitetään, paljonko tilaa vapautuu</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Tyhjennä haku</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>Sisältöpalvelin</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>Osoite, josta kartat ladataan.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>Tämä ei ole http-osoite.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Peruuta</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Käytä</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>Kohtaan %1 on liitetty toinen tiedostojärjestelmä; sitä ei voi poistaa.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>Kohdetta %1 ei voi siirtää turvaan.</translation>
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
        <translation>Järjestelmän mukaan</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Vaalea</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Tumma</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Pois</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Virheet</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>Virheet ja varoitukset</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>Myös tiedotukset</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Kaikki</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Tuntematon</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Asetukset</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Verkko</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Ei verkkoa</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Yhdistetty Wi‑Fillä tai kaapelilla</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>Yhdistetty mobiiliverkolla</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>Itse asetettu</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>Järjestelmän ilmoittama</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>Järjestelmä ei kerro</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>Lataa mobiiliverkossa</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>Voi maksaa. Pois: lataukset odottavat Wi‑Fi-yhteyttä.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>Aseta verkko itse</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>Jos järjestelmä ei tunnista sitä.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>Verkko on käytettävissä</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>Se on Wi‑Fi tai kaapeli</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Tässä laitteessa</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>Asennetut kartat</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n kartta</numerusform>
            <numerusform>%n karttaa</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Vapaata tilaa</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>Karttojen versio</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>Karttakohteiden versio</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>Kaupunkihakemisto</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n kaupunkipaketti</numerusform>
            <numerusform>%n kaupunkipakettia</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Kansio</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Palvelin</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>Sisältöpalvelin</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>Karttaluettelo</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n kartta valittavana</numerusform>
            <numerusform>%n karttaa valittavana</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>Palvelimella on uudempia karttoja: versio %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>Lopeta etsintä</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Etsi uusia karttoja</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>Tämä sovellus</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Ulkoasu</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Loki</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versio</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Kaikkien karttojen päivitys</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>Käynnissä</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>Versio %1 on tällä laitteella</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>Versiota %1 valmistellaan</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Uudempia karttoja ei tunneta</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Karttatietojen vaihto jäi kesken. Käynnistä ohjelma ensin uudelleen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; ei kelpaa tietojoukon nimen päätteeksi.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>Polussa %1 on välilyönti tai muu merkki, jota päivitys ei osaa käsitellä. Siirrä karttatiedot kansioon, jonka nimi on yksinkertainen.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>Valmisteltuja karttatietoja ei ole.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Varmuuskopiota, johon voisi palata, ei ole.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>Aiemman päivityksen varmuuskopio on yhä tallessa (%1). Poista se tai palaa siihen ensin.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>Toista päivitystä valmistellaan (%1). Luovu siitä ensin.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>Kansio %1 puuttuu.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 on linkki tai tiedosto; sen on oltava kansio.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>Kohtaan %1 on liitetty toinen tiedostojärjestelmä; sen on oltava ympäröivän tiedostojärjestelmän kansio.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 on äänitietojen tiellä.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>Kansio %1 on kirjoitussuojattu.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>Kohteessa %1 ei ole enää tilaa.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 puuttuu tai on vioittunut.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 puuttuu, on vioittunut tai siinä ei ole alueita.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>Tiedostoa %1 ei voi kirjoittaa (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>Merkintää %1 ei voi lukea.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>Merkintä %1 on vioittunut tai ei ole tämän ohjelman kirjoittama.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>Merkinnän %1 on kirjoittanut tämän ohjelman uudempi versio.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>Merkintä %1 on vioittunut.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>Tiedostoa %1 ei voi poistaa (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>Verkkoyhteyttä ei ole. Lataukset jatkuvat heti, kun yhteys on.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Lataukset odottavat Wi‑Fi-yhteyttä.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Siirrot</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Jatka</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Keskeytä</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Käytä mobiiliverkkoa</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>Yritä uudelleen: %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Peruuta %1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>Siirtoja ei ole käynnissä</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>Asennettaviksi valitut kartat näkyvät tässä, kunnes ne ovat valmiita.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Valitse karttoja</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>Poista %1 luettelosta</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>Poista päättyneet siirrot</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>Palvelimella on uudempia karttoja: versio %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>Näytä päivitys</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Päivitä kaikki kartat</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 ei ilmoita kelvollista karttaversiota.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Tiedostoa %1 ei voi kirjoittaa.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>Palvelimen tiedosto %1 on vioittunut tai siinä ei ole alueita.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Luettelossa ei ole kelvollista osoitetta alueelle %1.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Keskeytetty.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>Alueen %1 arkistossa ei ole karttaruutuja.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>Päivitys odottaa</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>Palataan vanhoihin karttoihin</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>Karttoja päivitetään</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>Kaikki kartat on päivitetty</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>Päivitystä ei voitu viedä loppuun</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>Uudemmat kartat ovat valmiina</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>Päivitys on kesken</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>Uudempia karttoja on saatavilla</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Uudempia karttoja ei tunneta</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>Verkkoa, jota se saa käyttää, ei ole. Se jatkuu itsestään heti, kun sellainen on.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>Kysytään palvelimen versiota</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>Haetaan version %1 karttaluetteloa</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>Valmistellaan versiota %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>Valmistellaan: %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>Otetaan versio %1 käyttöön</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Odota hetki</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>Versio %1 on korvannut version %2.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>Kartat ovat uusinta versiota.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>Versiossa %1 ei enää ole näitä asennettuja karttoja:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>Version %1 kartat ovat tällä laitteella. Ne voi ottaa käyttöön lataamatta mitään.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>Päivitys versioon %1 jatkuu siitä, mihin se jäi. Käytössä olevat kartat pysyvät ennallaan, kunnes se on valmis.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>Kaikki asennetut kartat päivitetään yhdessä. Uudet ladataan käytössä olevien rinnalle, ja vanhoihin voi palata jälkeenpäin.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>Palvelin kertoo, onko niitä.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Kaikkien karttojen päivitys</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>Jos jatkat ilman niitä, ne säilyvät vain vanhoissa kartoissa.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>Jatka ilman niitä</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Yritä uudelleen</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Päivitä kaikki kartat</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>Käytä versiota %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Jatka</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Käytä mobiiliverkkoa</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Pysäytä</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>Poista uudemmat kartat</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Luovu</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Etsi uusia karttoja</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versiot</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>Käytössä</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ei mitään</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Uudempi</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>Palvelimella</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Vapaata tilaa</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Tuntematon</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>Poistetaanko uudemmat kartat?</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>Luovutaanko päivityksestä?</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>Versiosta %1 ladattu poistetaan. Käytössä olevat kartat pysyvät ennallaan.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Poista</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>Päivitys vaatii käytössä olevien karttojen lisäksi tilaa enintään %1 kansiossa %2, mutta vapaana on vain %3.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 ei vastaa tai ei ole karttapalvelin.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 ei ilmoita kelvollista karttaversiota.</translation>
    </message>
</context>
</TS>
