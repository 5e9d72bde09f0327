<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>Fermer le message</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>Réessayer %1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>Installer %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Annuler %1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>Veuillez patienter</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Impossible de créer le dossier %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 est injoignable ou n’est pas un serveur de cartes.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 n’indique aucune version de cartes utilisable.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>Le serveur ne fournit pas %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>Le fichier %1 du serveur est endommagé ou ne contient aucune région&#x202f;; l’ancien est conservé.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Impossible d’écrire %1.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Impossible de créer le dossier %1.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>Impossible d’écrire le fichier de verrouillage %1.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>Un autre programme (processus %1) utilise ces données de cartes. Réessayez quand il aura terminé.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>Une mise à jour interrompue a été terminée&#x202f;: les nouvelles cartes sont utilisées.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>Une mise à jour interrompue n’a pas pu être terminée&#x202f;: les anciennes cartes sont utilisées.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>Le retour aux anciennes cartes, qui avait été interrompu, est maintenant terminé.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>Le retour aux anciennes cartes n’a pas pu être terminé&#x202f;: les nouvelles cartes sont utilisées.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>Une suppression interrompue a été terminée.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>Les données vocales mises de côté lors d’une suppression sont de nouveau à leur place.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>Un échange des données de cartes a été interrompu et ne peut pas être terminé.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>Ce qui gênait s’appelle maintenant %1.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>Les données de cartes sont en cours de chargement ou de modification. Réessayez ensuite.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>L’échange des données de cartes n’a pas pu être terminé&#x202f;: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>Les données de cartes n’ont pas pu être échangées et restent inchangées&#x202f;: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>Le shell n’a pas déplacé tous les dossiers&#x202f;; le reste a été déplacé sans lui.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; ne peut pas suivre le nom d’un jeu de données.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Un échange des données de cartes a été interrompu. Redémarrez d’abord le programme.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>Le serveur ne répond plus depuis %1&#xa0;s&#x202f;; abandon.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>Une mise à jour est en cours.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Il n’y a aucune sauvegarde à laquelle revenir.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>Des installations sont en attente (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>Des régions installées depuis ne sont pas dans la sauvegarde&#x202f;: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>Impossible d’écrire l’index des villes et l’état de la mise à jour.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>Une modification précédente des cartes a été interrompue et doit d’abord être réparée.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>Le nom du dossier %1 contient des caractères que les commandes d’une mise à jour n’acceptent pas.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>Il n’y a pas encore de catalogue.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>La sauvegarde d’une mise à jour précédente est encore là.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Impossible d’écrire l’état de la mise à jour.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>Des régions installées manquent dans la version %1&#x202f;: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>Impossible d’écrire les cartes préparées.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>contient %n carte</numerusform>
            <numerusform>contient %n cartes</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>Choisissez une carte</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>Sa taille et les actions possibles s’affichent ici.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>Aucun réseau</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi ou câble</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>Réseau mobile</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>%1 libres</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>Le disque n’accepte plus de données. Est-il plein&#x202f;?</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 est introuvable.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 gêne et ne peut pas être renommé.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 renvoie l’état %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 est beaucoup trop volumineux.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Interrompu.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 ne répond plus depuis %2&#xa0;s.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 est injoignable&#x202f;: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 est compressé pendant le transfert, ce qui n’est pas permis.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 a changé pendant la lecture.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 s’interrompt&#x202f;: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 fournit moins d’octets qu’annoncé.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 fournit plus d’octets qu’annoncé.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 fournit une autre partie que celle demandée.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>Cartes installées</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>%1 libres sur cet appareil</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Mettre à jour %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Supprimer %1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>Aucune carte installée</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>Les cartes installées fonctionnent sans aucun réseau. Choisissez les régions dont vous avez besoin.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Choisir des cartes</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>Cartes</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>Ouverture des cartes</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>Impossible d’ouvrir les cartes</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Installées</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>%1 a été supprimé&#x202f;; %2 sont de nouveau libres.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>Le serveur ne répond pas. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>Attendez la fin des transferts, ou annulez-les, avant de chercher de nouvelles cartes.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Il n’y a pas de connexion réseau.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>La liste des cartes est à jour (version %1).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>Le serveur a des cartes plus récentes (version %1). Celles installées restent en version %2.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>Toutes les cartes sont en cours de mise à jour. Aucune autre carte ne peut être installée ni supprimée avant la fin.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>Une mise à jour de toutes les cartes n’est pas terminée. Reprenez-la ou abandonnez-la avant d’installer ou de supprimer des cartes.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>Les anciennes cartes de la dernière mise à jour sont encore conservées. Supprimez-les d’abord.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Il n’y a pas de connexion réseau.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Les téléchargements attendent le Wi‑Fi.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>Les cartes sont déjà en cours de modification.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>Les cartes ne sont pas encore ouvertes.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>La liste des cartes est en cours de récupération. Attendez la fin.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>Laissez les transferts se terminer, ou annulez-les, avant de mettre à jour toutes les cartes.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>Les anciennes cartes sont en cours de suppression.</translation>
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
        <translation>Anciennes cartes</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>Version conservée</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>En cours de mesure</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>Conserver les anciennes cartes</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>Revenir à la version %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>Supprimer les anciennes cartes</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>Supprimer la sauvegarde</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>Revenir à la version %1&#xa0;?</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>Les anciennes cartes sont remises en service. Les plus récentes restent sur cet appareil jusqu’à ce que vous les supprimiez.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>Ces cartes ont été installées depuis et ne figurent pas parmi les anciennes&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Revenir</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>Supprimer les anciennes cartes&#xa0;?</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>Cela libère %1.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>Vous ne pourrez plus revenir à la version %1 ensuite.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>Suppression en cours</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>Impossible d’écrire dans les dossiers %1 et %2.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>Impossible de copier l’index des villes et config.cfg vers les nouvelles cartes.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>Impossible de supprimer le fichier %1.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Impossible d’écrire l’état de la mise à jour.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>Progression pas encore connue</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#x202f;%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>Téléchargement</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>Espace nécessaire une fois installée</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Sur cet appareil</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>Annuler le téléchargement</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Mettre à jour</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>Le catalogue ne contient pas de région &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>L’installation de la région %1 est déjà en cours.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Le catalogue n’indique pas d’adresse utilisable pour %1.</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>%1 nécessite %2, mais il ne reste que %3.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>La liste des installations en attente n’a pas pu être écrite.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>La région %1 n’est pas en cours d’installation.</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>Les fichiers de la région %1 sont déjà en train d’être mis en place.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>La région %1 n’est pas installée.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>La région %1 est en cours d’installation&#x202f;; annulez-la d’abord.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>L’archive de la région %1 ne contient aucune tuile de carte.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>Des fichiers de la région %1 manquent après l’installation.</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>Le catalogue ne contient plus la région &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>La région %1 n’a pas pu être enregistrée&#x202f;: impossible d’écrire le fichier de contenu.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>Le serveur a envoyé %1 octets pour la région %2, mais le catalogue en annonce %3&#x202f;; rien n’a été modifié. Une page de connexion s’est-elle interposée, ou le catalogue est-il ancien&#x202f;?</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>L’archive de la région %1 est endommagée ou n’a pas pu être décompressée&#x202f;; rien n’a été modifié.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>Les fichiers de la région %1 n’ont pas pu être mis en place. L’espace de stockage est-il plein&#x202f;?</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>Le serveur a refusé d’envoyer l’archive de la région %1.</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>L’archive de la région %1 n’a pas pu être téléchargée&#x202f;: le serveur est injoignable ou ne l’a pas.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>La dernière installation de %1 n’a pas échoué.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>Installée</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>%1 sur cet appareil</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>contient %n carte</numerusform>
            <numerusform>contient %n cartes</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>Mise en pause par vos soins</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>En attente du Wi‑Fi</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Non installée</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>En file d’attente</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>Téléchargement, %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Téléchargement</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>Téléchargement&#x202f;: %1&#x202f;%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>Téléchargement&#x202f;: %1&#x202f;%, encore %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Décompression</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>Décompression&#x202f;: %1&#x202f;%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>Mise en place des fichiers</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Finalisation</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Installée</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Annulé</translation>
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
        <translation>En attente d’un réseau</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>Cartes disponibles</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>Toutes les cartes</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Chercher de nouvelles cartes</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>Rechercher une carte</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>Aucune carte ne porte ce nom</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>Essayez avec moins de lettres, ou avec le nom dans une autre langue.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>Aucune carte connue pour l’instant</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>Récupérez d’abord la liste des cartes sur le serveur. Elle est légère&#x202f;; les cartes elles-mêmes sont téléchargées une par une, selon votre choix.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>Récupérer la liste</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1 en entier</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 est chiffré.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1&#x202f;: mémoire insuffisante.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>Impossible de lister le contenu de %1&#x202f;: son serveur ne fournit que des fichiers entiers.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 est endommagé ou n’est pas une archive&#x202f;: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 n’indique pas la taille de ses fichiers.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 contient un fichier qui ne doit pas être décompressé&#x202f;: &quot;%2&quot;.</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>Supprimer %1&#x202f;?</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>Cela libère %1 (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n fichier</numerusform>
            <numerusform>%n fichiers</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>%1 (%2) sont conservés, car d’autres cartes installées en ont besoin.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>Calcul de l’espace libéré</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Effacer la recherche</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>Serveur de contenu</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>L’adresse depuis laquelle les cartes sont téléchargées.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>Ce n’est pas une adresse http.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Utiliser</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>Un autre système de fichiers est monté sur %1&#x202f;; il ne peut pas être supprimé.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>Impossible de mettre %1 en lieu sûr.</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1&#x202f;: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>Comme le système</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Erreurs</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>Erreurs et avertissements</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>Informations également</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Tout</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Réseau</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Aucun réseau</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Connecté en Wi‑Fi ou par câble</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>Connecté au réseau mobile</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>Défini par vous</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>Indiqué par le système</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>Le système ne l’indique pas</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>Télécharger via le réseau mobile</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>Peut être payant. Désactivé&#x202f;: les téléchargements attendent le Wi‑Fi.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>Définir le réseau à la main</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>Si le système ne le connaît pas.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>Réseau disponible</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>C’est du Wi‑Fi ou un câble</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>Sur cet appareil</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>Cartes installées</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n carte</numerusform>
            <numerusform>%n cartes</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Espace libre</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>Version des cartes</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>Version des objets de carte</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>Index des villes</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n paquet de villes</numerusform>
            <numerusform>%n paquets de villes</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Dossier</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Serveur</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>Serveur de contenu</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>Liste des cartes</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n carte au choix</numerusform>
            <numerusform>%n cartes au choix</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>Le serveur a des cartes plus récentes&#x202f;: version %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>Arrêter la recherche</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Chercher de nouvelles cartes</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>Cette application</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Mise à jour de toutes les cartes</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>La version %1 est sur cet appareil</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>La version %1 est en préparation</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Aucune carte plus récente connue</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Un échange des données de cartes a été interrompu. Redémarrez d’abord le programme.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>&quot;%1&quot; ne peut pas suivre le nom d’un jeu de données.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>Le chemin %1 contient une espace ou un autre caractère que la mise à jour n’accepte pas. Déplacez les données de cartes dans un dossier au nom simple.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>Aucune donnée de cartes n’est préparée.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Il n’y a aucune sauvegarde à laquelle revenir.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>La sauvegarde d’une mise à jour précédente est encore là (%1). Supprimez-la ou revenez-y d’abord.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>Une autre mise à jour est en préparation (%1). Abandonnez-la d’abord.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>Le dossier %1 est introuvable.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 est un lien ou un fichier&#x202f;; ce doit être un dossier.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>Un autre système de fichiers est monté sur %1&#x202f;; ce doit être un dossier du système de fichiers qui l’entoure.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 occupe la place des données vocales.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>Le dossier %1 est protégé en écriture.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>Il n’y a plus d’espace libre dans %1.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 est introuvable ou endommagé.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 est introuvable, endommagé ou ne contient aucune région.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>Impossible d’écrire %1 (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>Impossible de lire la note %1.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>La note %1 est endommagée ou n’a pas été écrite par ce programme.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>La note %1 a été écrite par une version plus récente de ce programme.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>La note %1 est endommagée.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>Impossible de supprimer %1 (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>Il n’y a pas de réseau. Les téléchargements reprendront dès qu’il y en aura un.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Les téléchargements attendent le Wi‑Fi.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Utiliser le réseau mobile</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>Réessayer %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Annuler %1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>Aucun transfert en cours</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>Les cartes que vous choisissez d’installer s’affichent ici jusqu’à ce qu’elles soient prêtes.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Choisir des cartes</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>Retirer %1 de la liste</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>Effacer les transferts terminés</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>Le serveur a des cartes plus récentes&#xa0;: version %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>Afficher la mise à jour</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Mettre à jour toutes les cartes</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 n’indique aucune version de cartes utilisable.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Impossible d’écrire %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>Le fichier %1 du serveur est endommagé ou ne contient aucune région.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>Le catalogue n’indique pas d’adresse utilisable pour %1.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Interrompu.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>L’archive de la région %1 ne contient aucune tuile de carte.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>La mise à jour attend</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>Retour aux anciennes cartes</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>Les cartes sont en cours de mise à jour</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>Toutes les cartes sont à jour</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>La mise à jour n’a pas pu être terminée</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>Des cartes plus récentes sont prêtes</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>Une mise à jour n’est pas terminée</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>Il y a des cartes plus récentes</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Aucune carte plus récente connue</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>Aucun réseau autorisé n’est disponible. Elle reprendra d’elle-même dès qu’il y en aura un.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>Demande de la version au serveur</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>Récupération de la liste des cartes de la version %1</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>Préparation de la version %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>Préparation de %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>Mise en service de la version %1</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Veuillez patienter</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>La version %1 a remplacé la version %2.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>Les cartes sont de la version la plus récente.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>La version %1 ne contient plus ces cartes installées&#xa0;:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>Les cartes de la version %1 sont sur cet appareil. Elles peuvent être mises en service sans téléchargement.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>La mise à jour vers la version %1 reprend là où elle s’est arrêtée. Les cartes utilisées restent inchangées jusqu’à la fin.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>Toutes les cartes installées sont mises à jour ensemble. Les nouvelles sont téléchargées à côté de celles utilisées, auxquelles vous pourrez revenir ensuite.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>Le serveur indique s’il y en a.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Mise à jour de toutes les cartes</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>Si vous continuez sans elles, elles ne restent que dans les anciennes cartes.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>Continuer sans elles</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Mettre à jour toutes les cartes</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>Utiliser la version %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>Utiliser le réseau mobile</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>Supprimer les cartes plus récentes</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Chercher de nouvelles cartes</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versions</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>Utilisée</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Plus récente</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>Sur le serveur</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Espace libre</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>Supprimer les cartes plus récentes&#xa0;?</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>Abandonner la mise à jour&#xa0;?</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>Ce qui a été téléchargé de la version %1 est supprimé. Les cartes utilisées restent inchangées.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>La mise à jour nécessite jusqu’à %1 sous %2 en plus des cartes utilisées, mais il ne reste que %3.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 est injoignable ou n’est pas un serveur de cartes.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 n’indique aucune version de cartes utilisable.</translation>
    </message>
</context>
</TS>
